#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "platform/Clock.h"
#include "rules/RuleEngine.h"
#include "store/JsonForm.h"
#include "store/JsonLine.h"
#include "store/JsonLines.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <iostream>

namespace quorvane::cli {
namespace {

/// The store's rules and projects, read once.
struct Ruleset {
    explicit Ruleset(ModelContext& store) : rules(store.fetch<Rule>()), projects(store.fetch<Project>()) {
        for (const auto& project : projects) {
            projectIds.emplace(project->objectId(), project->id());
            projectsById.try_emplace(project->id(), project);  // of several the oldest
        }
    }

    std::vector<std::shared_ptr<Rule>> rules;
    std::vector<std::shared_ptr<Project>> projects;
    JsonForm::RowIds projectIds;
    std::unordered_map<Uuid, std::shared_ptr<Project>> projectsById;
};

/// The record that the line describes, in no store. Throws `JsonForm::Error`.
std::shared_ptr<ActivityRecord> recordOf(const JsonLine& line, const Ruleset& ruleset) {
    const auto& entity = ActivityRecord::description();
    if (const auto* value = line.find("entity"); value != nullptr)
        if (const auto* name = std::get_if<std::string>(value); name == nullptr || *name != entity.name)
            throw JsonForm::Error(fmt::format("\"entity\" must be \"{}\"", entity.name));
    const auto values = JsonForm::readObject(entity, line);
    auto record = std::make_shared<ActivityRecord>();
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (entity.attributes[i].kind != AttributeKind::reference) {
            entity.attributes[i].set(*record, values[i]);
        } else if (!isNull(values[i])) {
            const Uuid id = ValueTraits<Uuid>::fromSql(values[i]);
            const auto project = ruleset.projectsById.find(id);
            if (project == ruleset.projectsById.end())
                throw JsonForm::Error(fmt::format("\"project_id\" names no project: {}", id.string()));
            record->project = project->second;
        }
    }
    return record;
}

void classify(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::read));
    const Ruleset ruleset(store);
    const platform::ClockOverride oneInstant([now = platform::currentDate()] { return now; });
    Output output;
    Progress progress("lines");
    JsonLine line;
    std::string object;
    try {
        JsonLines::forEach(std::cin, [&](std::string_view text, std::size_t number) {
            line.read(text);
            const auto record = recordOf(line, ruleset);
            RuleEngine::apply(*record, ruleset.rules, ruleset.projects);
            object.clear();
            JsonForm::appendObject(object, *record, ruleset.projectIds);
            output.write(object + "\n");
            progress.show(number);
        });
    } catch (const JsonLines::Error& error) {
        throw CommandError(ExitStatus::failed, fmt::format("standard input: {}", error.what()));
    }
    output.finish();
}

}  // namespace

void addClassifyCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("classify", "Show how the rules leave the records on standard input");
    command->callback([&context] { context.command = [&context] { classify(context); }; });
}

}  // namespace quorvane::cli
