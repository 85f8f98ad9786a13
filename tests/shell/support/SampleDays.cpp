#include "shell/support/SampleDays.h"

#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Builders.h"

#include <fmt/format.h>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

struct SampleRecord {
    int day;
    const char* start;
    const char* end;
    const char* app;
    const char* title;
};

constexpr SampleRecord records[] = {
    {6, "09:05", "10:29", "Visual Studio Code", "checkout.css — orchard"},
    {6, "10:40", "13:46", "Figma", "Harbour — icon set"},
    {6, "14:10", "14:40", "Thunderbird", "Inbox"},
    {7, "10:02", "10:06", "Firefox", "News"},
    {9, "08:38", "09:07", "Thunderbird", "Inbox"},
    {9, "09:07", "11:19", "Visual Studio Code", "checkout.css — orchard"},
    {9, "11:19", "11:36", "Terminal", "make test"},
    {9, "11:36", "12:18", "Slack", "orchard-checkout"},
    {9, "13:08", "14:37", "Figma", "Harbour — landing page"},
    {9, "14:37", "15:02", "Firefox", "Cascade layers — web reference"},
    {9, "15:02", "17:17", "Visual Studio Code", "cart.ts — orchard"},
    {9, "17:17", "17:47", "Slack", "orchard-checkout"},
    {10, "09:04", "09:27", "Slack", "general"},
    {10, "09:27", "12:07", "Figma", "Harbour — colour study"},
    {10, "12:58", "13:38", "Firefox", "Contrast checker"},
    {10, "13:38", "16:14", "Visual Studio Code", "portal.ts — lumen"},
    {10, "16:14", "16:38", "Terminal", "npm run build"},
    {10, "16:38", "17:30", "LibreOffice Calc", "hours.ods"},
    {11, "08:28", "09:00", "Thunderbird", "Inbox"},
    {11, "09:00", "10:43", "Visual Studio Code", "portal.ts — lumen"},
    {11, "10:43", "11:29", "Slack", "lumen"},
    {11, "11:29", "12:28", "Firefox", "Tables — web reference"},
    {11, "13:59", "15:06", "LibreOffice Calc", "offer.ods"},
    {11, "15:06", "17:42", "Visual Studio Code", "tokens.css — harbour-site"},
    {11, "20:28", "21:18", "Firefox", "Fjord newsletter preview"},
    {12, "08:52", "09:20", "Thunderbird", "Inbox"},
    {12, "09:20", "10:39", "Visual Studio Code", "checkout.css — orchard"},
    {12, "10:39", "10:56", "Terminal", "make test"},
    {12, "10:57", "11:44", "Visual Studio Code", "cart.ts — orchard"},
    {12, "11:44", "12:03", "Slack", "orchard-checkout"},
    {12, "12:03", "12:46", "Firefox", "Formatting currencies — web reference"},
    {12, "14:00", "14:43", "Figma", "Harbour — icon set"},
    {12, "14:43", "14:52", "Slack", "harbour"},
    {12, "14:52", "15:21", "Firefox", "Icon grids — web reference"},
    {12, "15:24", "16:02", "Figma", "Harbour — icon set"},
    {12, "16:02", "16:11", "Thunderbird", "Re: icon set"},
    {12, "16:11", "16:49", "Visual Studio Code", "tokens.css — harbour-site"},
};

struct SampleProject {
    const char* name;
    const char* client;
    const char* tone;
    double rate;
};

constexpr SampleProject projects[] = {{"Orchard checkout", "Orchard & Co.", "sky", 92},
                                      {"Harbour rebrand", "Northlight Studio", "teal", 85},
                                      {"Lumen docs portal", "Lumen Health", "lilac", 78},
                                      {"Fjord newsletter", "Fjord Travel", "apricot", 64},
                                      {"Studio admin", "", "fog", 0}};

struct SampleAnnotation {
    int day;
    const char* start;
    const char* end;
    const char* project;
};

constexpr SampleAnnotation annotations[] = {
    {2, "09:00", "12:30", "Orchard checkout"},  {2, "13:30", "15:45", "Lumen docs portal"},
    {3, "09:15", "14:15", "Orchard checkout"},  {3, "16:00", "16:45", "Studio admin"},
    {4, "09:00", "13:30", "Harbour rebrand"},   {4, "14:00", "15:30", "Fjord newsletter"},
    {5, "09:00", "13:00", "Orchard checkout"},  {5, "14:00", "15:00", "Lumen docs portal"},
    {6, "10:30", "13:45", "Harbour rebrand"},   {9, "08:55", "11:40", "Orchard checkout"},
    {9, "13:00", "15:00", "Harbour rebrand"},   {9, "15:00", "17:30", "Orchard checkout"},
    {10, "09:25", "12:10", "Harbour rebrand"},  {10, "13:25", "16:40", "Lumen docs portal"},
    {10, "16:40", "17:30", "Studio admin"},     {11, "08:55", "12:25", "Lumen docs portal"},
    {11, "14:00", "15:15", "Studio admin"},     {11, "15:05", "17:40", "Orchard checkout"},
    {11, "20:25", "21:25", "Fjord newsletter"}, {12, "09:18", "11:48", "Orchard checkout"},
    {12, "13:57", "15:27", "Harbour rebrand"},  {12, "14:57", "15:57", "Lumen docs portal"},
    {12, "16:10", "17:00", "Harbour rebrand"},
};

/// The applications that the palette knows by their identifier, and one that it doesn't.
std::optional<std::string> bundleId(std::string_view app) {
    constexpr std::pair<std::string_view, const char*> known[] = {{"Visual Studio Code", "com.microsoft.vscode"},
                                                                  {"Figma", "com.figma.desktop"},
                                                                  {"Firefox", "org.mozilla.firefox"},
                                                                  {"Thunderbird", "org.mozilla.thunderbird"},
                                                                  {"Slack", "com.tinyspeck.slackmacgap"},
                                                                  {"Terminal", "com.apple.terminal"}};
    for (const auto& [name, id] : known)
        if (name == app) return id;
    return "libreoffice-calc";
}

std::string instant(int day, const char* time) {
    return fmt::format("2026-03-{:02} {}:00", day, time);
}

std::map<std::string, std::shared_ptr<Project>> insertProjects(ModelContext& context) {
    std::map<std::string, std::shared_ptr<Project>> byName;
    for (const SampleProject& sample : projects) {
        const auto project = insertProject(context, sample.name, sample.rate);
        project->color = std::optional<std::string>(sample.tone);
        if (*sample.client != '\0') project->clientName = std::optional<std::string>(sample.client);
        // Columns of bars go by the projects' ids: the same in every run.
        project->id = *Uuid::parse(fmt::format("00000000-0000-4000-8000-{:012}", byName.size()));
        byName[sample.name] = project;
    }
    return byName;
}

}  // namespace

void insertSampleDays(ModelContext& context) {
    const auto byName = insertProjects(context);
    for (const SampleRecord& sample : records) {
        auto record = aRecord();
        record.from(instant(sample.day, sample.start)).to(instant(sample.day, sample.end)).app(sample.app);
        record.title(sample.title).source("rule");
        if (std::string_view(sample.app) == "Figma")
            record.document("/home/mia/Harbour/icon-set-v2.fig").category(ActivityCategory::work).tags("设计,创意工作");
        if (std::string_view(sample.app) == "Firefox") record.url("https://docs.example.org/css/layers");
        record.in(context)->appBundleId = bundleId(sample.app);
    }
    for (const SampleAnnotation& sample : annotations) {
        const auto annotation = std::make_shared<ProjectTimeAnnotation>();
        annotation->startTime = at(instant(sample.day, sample.start));
        annotation->endTime = at(instant(sample.day, sample.end));
        annotation->project = byName.at(sample.project);
        context.insert(annotation);
    }
    context.save();
}

}  // namespace quorvane
