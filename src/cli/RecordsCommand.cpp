#include "base/TerminalText.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "platform/Clock.h"
#include "session/LocalTime.h"
#include "store/ActivityRecord.h"
#include "store/JsonForm.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {
namespace {

struct RecordsOptions {
    std::optional<Date> from;
    std::optional<Date> to;
    std::optional<std::string> app;
    std::optional<Uuid> project;
    std::optional<std::size_t> limit;
};

using Descriptor = FetchDescriptor<ActivityRecord>;

/// None when the options name a project that the store does not have.
std::optional<Descriptor> descriptorOf(const RecordsOptions& options, ModelContext& store) {
    Descriptor descriptor{.sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)},
                          .limit = options.limit};
    auto& predicate = descriptor.predicate;
    if (options.project) {
        const auto found = store.fetch<Project>({.predicate = field(&Project::id) == *options.project, .limit = 1});
        if (found.empty()) return std::nullopt;
        predicate = predicate && refersTo(&ActivityRecord::project, *found.front());
    }
    if (options.from) predicate = predicate && field(&ActivityRecord::startTime) >= *options.from;
    if (options.to) predicate = predicate && field(&ActivityRecord::startTime) <= *options.to;
    if (options.app) predicate = predicate && field(&ActivityRecord::appName) == *options.app;
    return descriptor;
}

void writeJson(ModelContext& store, const std::optional<Descriptor>& descriptor, Output& output) {
    JsonForm::RowIds projects;
    for (const auto& project : store.fetch<Project>())
        projects.emplace(project->objectId(), project->id());
    JsonList list(output);
    std::string item;
    const auto& entity = ActivityRecord::description();
    const auto visit = [&](const Row& row) {
        item.clear();
        JsonForm::appendObject(item, entity, row, projects);
        list.add(item);
        return true;
    };
    if (descriptor) store.scan(*descriptor, JsonForm::attributeNames(entity), visit);
    list.finish();
}

void writeTable(ModelContext& store, const std::optional<Descriptor>& descriptor, Output& output) {
    std::unordered_map<std::int64_t, std::string> projectNames;
    for (const auto& project : store.fetch<Project>())
        projectNames.emplace(project->objectId(), project->name());
    const LocalTime local;
    const Date now = platform::currentDate();
    TextTable table({{.title = "START", .maxWidth = 19},
                     {.title = "END", .maxWidth = 19},
                     {.title = "DURATION", .maxWidth = 10, .isNumber = true},
                     {.title = "APP", .maxWidth = 24, .minWidth = 8},
                     {.title = "TITLE", .maxWidth = 60, .minWidth = 8},
                     {.title = "PROJECT", .maxWidth = 30, .minWidth = 7}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    const auto visit = [&](const Row& row) {
        const auto textAt = [&](int column) { return row.isNull(column) ? std::string_view() : row.text(column); };
        const Date start = dateFromMicroseconds(row.integer(0));
        const bool isOpen = row.isNull(1);
        const Date end = isOpen ? now : dateFromMicroseconds(row.integer(1));
        const auto project = projectNames.find(row.isNull(4) ? 0 : row.integer(4));
        table.add({local.dateAndTime(start), isOpen ? "open" : local.dateAndTime(end), durationText(end - start),
                   harmlessLine(textAt(2)), harmlessLine(textAt(3)),
                   project == projectNames.end() ? std::string() : harmlessLine(project->second)});
        return true;
    };
    if (descriptor)
        store.scan(*descriptor, {"start_time", "end_time", "app_name", "window_title", "project_id"}, visit);
    table.finish();
}

void records(const CommandContext& context, const RecordsOptions& options) {
    ModelContext store(context.open(StoreAccess::read));
    const auto descriptor = descriptorOf(options, store);
    Output output;
    if (context.json)
        writeJson(store, descriptor, output);
    else
        writeTable(store, descriptor, output);
    output.finish();
}

}  // namespace

void addRecordsCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("records", "List records, newest first");
    const auto options = std::make_shared<RecordsOptions>();
    addInstantOption(*command, "--from", options->from, "Only records that start then or later");
    addInstantOption(*command, "--to", options->to, "Only records that start then or earlier");
    command->add_option("--app", options->app, "Only records of the application with this name")->type_name("NAME");
    command
        ->add_option_function<std::string>(
            "--project", [options](const std::string& text) { options->project = readUuid("--project", text); },
            "Only records with this project")
        ->type_name("UUID");
    command
        ->add_option_function<std::string>(
            "--limit", [options](const std::string& text) { options->limit = readCount("--limit", text); },
            "At most so many")
        ->type_name("N");
    command->callback([&context, options] { context.command = [&context, options] { records(context, *options); }; });
}

}  // namespace quorvane::cli
