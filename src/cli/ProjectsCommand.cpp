#include "base/TerminalText.h"
#include "base/Text.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/ObjectById.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "store/JsonForm.h"
#include "store/Project.h"
#include "timeline/ProjectTone.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace quorvane::cli {
namespace {

/// What the options say about a project; what they leave out stays as it is.
struct ProjectOptions {
    std::optional<std::string> name;
    std::optional<std::string> client;  ///< empty for none
    std::optional<double> rate;
    std::optional<std::string> currency;
    std::optional<std::string> color;
    friend bool operator==(const ProjectOptions&, const ProjectOptions&) = default;
};

std::string readTone(const std::string& text) {
    const auto names = AppColorPalette::projectToneNames();
    std::string name = text::lowercased(text);
    if (std::ranges::find(names, name) == names.end()) refuseChoice("--color", text, {names.begin(), names.end()});
    return name;
}

void refuseBlank(const std::optional<std::string>& value, std::string_view what) {
    if (value && text::trimmedWithNewlines(*value).empty())
        throw CommandError(ExitStatus::failed, fmt::format("the {} can't be empty", what));
}

void apply(const ProjectOptions& options, Project& project) {
    if (options.name) project.name = *options.name;
    if (options.client) project.clientName = options.client->empty() ? std::nullopt : options.client;
    if (options.rate) project.hourlyRate = *options.rate;
    if (options.currency) project.currencyCode = *options.currency;
    if (options.color) project.color = options.color;
}

/// The row as a dump has it, and its colours.
std::string jsonOf(const Project& project) {
    std::string out;
    JsonForm::appendObject(out, project, {});
    const ProjectTone tone = AppColorPalette::projectTone(project.color().value_or(""));
    out.pop_back();
    return out + fmt::format(R"(,"fill":"{}","accent":"{}"}})", hexText(tone.fill), hexText(tone.accent));
}

void writeTable(const std::vector<std::shared_ptr<Project>>& projects, Output& output) {
    TextTable table({{.title = "NAME", .maxWidth = 40, .minWidth = 8},
                     {.title = "CLIENT", .maxWidth = 30, .minWidth = 6},
                     {.title = "RATE", .maxWidth = 12, .isNumber = true},
                     {.title = "CURRENCY", .maxWidth = 8},
                     {.title = "COLOR", .maxWidth = 10},
                     {.title = "STATE", .maxWidth = 8},
                     {.title = "ID", .maxWidth = 36}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const auto& project : projects)
        table.add({harmlessLine(project->name()), harmlessLine(project->clientName().value_or("")),
                   fmt::format("{}", project->hourlyRate()), harmlessLine(project->currencyCode()),
                   harmlessLine(project->color().value_or("")), project->isArchived() ? "archived" : "",
                   project->id().string()});
    table.finish();
}

void listProjects(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::read));
    auto projects = store.fetch<Project>();
    std::ranges::sort(projects, {}, [](const auto& project) { return std::pair(project->name(), project->id()); });
    Output output;
    if (context.json) {
        JsonList rows(output);
        for (const auto& project : projects)
            rows.add(jsonOf(*project));
        rows.finish();
    } else {
        writeTable(projects, output);
    }
    output.finish();
}

void add(const CommandContext& context, const ProjectOptions& options) {
    refuseBlank(options.name, "name");
    refuseBlank(options.currency, "currency");
    ModelContext store(context.open(StoreAccess::write));
    const auto project = std::make_shared<Project>();
    project->updatedAt = project->createdAt();
    apply(options, *project);
    store.insert(project);
    store.save();
    Output output;
    output.write((context.json ? jsonOf(*project) : project->id().string()) + "\n");
    output.finish();
}

void edit(const CommandContext& context, const Uuid& id, const ProjectOptions& options) {
    if (options == ProjectOptions{})
        throw CommandError(ExitStatus::wrongUsage, "projects edit: there is no option that says what to change");
    refuseBlank(options.name, "name");
    refuseBlank(options.currency, "currency");
    ModelContext store(context.open(StoreAccess::change));
    const auto project = objectById<Project>(store, id);
    apply(options, *project);
    project->updatedAt = platform::currentDate();
    store.save();
}

void archive(const CommandContext& context, const Uuid& id) {
    ModelContext store(context.open(StoreAccess::change));
    const auto project = objectById<Project>(store, id);
    if (project->isArchived()) return;
    project->isArchived = true;
    project->updatedAt = platform::currentDate();
    store.save();
}

/// Returns the option of the name.
CLI::Option* describeOptions(CLI::App& command, ProjectOptions& options) {
    command.add_option("--client", options.client, "Whom the time is billed to; an empty text for nobody")
        ->type_name("NAME");
    addTextOption(command, "--rate", "NUMBER", "Money per hour, from 0",
                  [&options](const std::string& text) { options.rate = readNonNegative("--rate", text); });
    command.add_option("--currency", options.currency, "The code of the currency, such as EUR")->type_name("CODE");
    addTextOption(command, "--color", "TONE",
                  fmt::format("One of {}", fmt::join(AppColorPalette::projectToneNames(), ", ")),
                  [&options](const std::string& text) { options.color = readTone(text); });
    return command.add_option("--name", options.name, "How the project is called")->type_name("NAME");
}

}  // namespace

void addProjectsCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "projects", "List, add, change and archive projects");
    const auto options = std::make_shared<ProjectOptions>();
    const auto id = std::make_shared<Uuid>();
    addMember(*group, context, "list", "List all projects by name", [&context] { listProjects(context); });
    auto* adding = addMember(*group, context, "add", "Add a project and print its id",
                             [&context, options] { add(context, *options); });
    describeOptions(*adding, *options)->required();
    auto* editing = addMember(*group, context, "edit", "Change what the options name",
                              [&context, id, options] { edit(context, *id, *options); });
    addIdArgument(*editing, *id);
    describeOptions(*editing, *options);
    auto* archiving = addMember(*group, context, "archive", "Take a project out of the pickers; its records keep it",
                                [&context, id] { archive(context, *id); });
    addIdArgument(*archiving, *id);
}

}  // namespace quorvane::cli
