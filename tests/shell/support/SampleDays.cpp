#include "shell/support/SampleDays.h"

#include "base/Text.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"

#include <fmt/format.h>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

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
    for (const auto& line : text::split(contentOf(QUORVANE_SAMPLE_DAYS), '\n')) {
        const auto cells = text::split(line, '|');
        if (cells.size() < 4) continue;
        const auto instant = [&](std::size_t cell) {
            return fmt::format("2026-03-{:0>2} {}:00", text::trimmed(cells[0]), cells[cell]);
        };
        if (cells.size() == 4) {
            const auto annotation = std::make_shared<ProjectTimeAnnotation>();
            annotation->startTime = at(instant(1));
            annotation->endTime = at(instant(2));
            annotation->project = byName.at(cells[3]);
            context.insert(annotation);
            continue;
        }
        const std::string& app = cells[3];
        auto record = aRecord().from(instant(1)).to(instant(2)).app(app).title(cells[4]).source("rule");
        if (app == "Figma")
            record.document("/home/mia/Harbour/icon-set-v2.fig").category(ActivityCategory::work).tags("设计,创意工作");
        if (app == "Firefox") record.url("https://docs.example.org/css/layers");
        record.in(context)->appBundleId = bundleId(app);
    }
    context.save();
}

}  // namespace quorvane
