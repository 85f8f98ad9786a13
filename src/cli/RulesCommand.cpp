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
#include "rules/BuiltInRuleTemplates.h"
#include "rules/RuleDraft.h"
#include "store/JsonForm.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <tuple>

namespace quorvane::cli {
namespace {

std::string jsonOf(const Rule& rule) {
    std::string out;
    JsonForm::appendObject(out, rule, {});
    return out;
}

void writeTable(const std::vector<std::shared_ptr<Rule>>& rules, ModelContext& store, Output& output) {
    const auto localization = Localization::fromEnvironment();
    const auto projects = store.fetch<Project>();
    TextTable table({{.title = "PRIORITY", .maxWidth = 8, .isNumber = true},
                     {.title = "STATE", .maxWidth = 5},
                     {.title = "NAME", .maxWidth = 40, .minWidth = 8},
                     {.title = "ID", .maxWidth = 36},
                     {.title = "SUMMARY", .maxWidth = 100, .minWidth = 12}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const auto& rule : rules)
        table.add({fmt::format("{}", rule->priority()), rule->isEnabled() ? "on" : "off", harmlessLine(rule->name()),
                   rule->id().string(), harmlessLine(RuleDraft(*rule).summary(localization, projects))});
    table.finish();
}

void listRules(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::read));
    auto rules = store.fetch<Rule>();
    std::ranges::sort(rules, {}, [](const auto& rule) {
        return std::tuple(rule->priority(), -rule->updatedAt().time_since_epoch(), rule->id());
    });
    Output output;
    if (context.json) {
        JsonList rows(output);
        for (const auto& rule : rules)
            rows.add(jsonOf(*rule));
        rows.finish();
    } else {
        writeTable(rules, store, output);
    }
    output.finish();
}

void importTemplates(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::write));
    const auto result = BuiltInRuleTemplates::importAll(store, Localization::fromEnvironment());
    store.save();  // what the import could not save is still there: says why
    Output output;
    output.write(fmt::format("{{\"imported\":{},\"skipped\":{}}}\n", result.imported, result.skipped));
    output.finish();
}

/// Why the draft can't be saved.
std::string refusalOf(const RuleDraft& draft) {
    const auto isBlank = [](const std::string& text) { return text::trimmedWithNewlines(text).empty(); };
    if (isBlank(draft.name)) return "a rule needs a name (--name)";
    if (isBlank(draft.value)) return "a rule needs a text to compare with (--value)";
    return "a rule needs something to do (--category, --project or --tag)";
}

void add(const CommandContext& context, const RuleDraft& draft) {
    if (!draft.canSave()) throw CommandError(ExitStatus::failed, refusalOf(draft));
    ModelContext store(context.open(draft.projectId ? StoreAccess::change : StoreAccess::write));
    if (draft.projectId) static_cast<void>(objectById<Project>(store, *draft.projectId));
    const auto rule = std::make_shared<Rule>();
    draft.writeTo(*rule);
    rule->createdAt = rule->updatedAt();
    store.insert(rule);
    store.save();
    Output output;
    output.write((context.json ? jsonOf(*rule) : rule->id().string()) + "\n");
    output.finish();
}

void remove(const CommandContext& context, const Uuid& id) {
    ModelContext store(context.open(StoreAccess::change));
    store.remove(objectById<Rule>(store, id));
    store.save();
}

void enable(const CommandContext& context, const Uuid& id, bool isEnabled) {
    ModelContext store(context.open(StoreAccess::change));
    const auto rule = objectById<Rule>(store, id);
    if (rule->isEnabled() == isEnabled) return;
    rule->isEnabled = isEnabled;
    rule->updatedAt = platform::currentDate();
    store.save();
}

void addDraftOptions(CLI::App& command, RuleDraft& draft) {
    command.add_option("--name", draft.name, "How the rule is called")->type_name("NAME")->required();
    addTextOption(command, "--field", "FIELD", "appBundleId, appName, windowTitle, urlHost, url or documentPath",
                  [&draft](const auto& text) { draft.field = readCase<RuleField>("--field", text); })
        ->required();
    addTextOption(command, "--operator", "OPERATOR", "contains, equals, prefix or regex", [&draft](const auto& text) {
        draft.matchOperator = readCase<RuleOperator>("--operator", text);
    })->required();
    command.add_option("--value", draft.value, "What the field is compared with")->type_name("TEXT")->required();
    addTextOption(command, "--category", "CATEGORY", "Give the record this category", [&draft](const auto& text) {
        draft.category = text.empty() ? std::nullopt : std::optional(readCategory(text));
    });
    addTextOption(command, "--project", "UUID", "Give the record this project",
                  [&draft](const auto& text) { draft.projectId = readUuid("--project", text); });
    command
        .add_option_function<std::vector<std::string>>(
            "--tag", [&draft](const auto& tags) { draft.tags = text::joined(tags, ","); },
            "Give the record this tag; commas separate several, and it may be repeated")
        ->type_name("TAG")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addTextOption(command, "--priority", "NUMBER", "Smaller runs first; 100 if left out",
                  [&draft](const auto& text) { draft.priority = readInteger("--priority", text); });
    command.add_flag("--stop", draft.stopProcessing, "Where this rule matches, no later one is asked");
}

}  // namespace

void addRulesCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "rules", "List and change the rules that classify new records");
    addMember(*group, context, "list", "List all rules in the order in which they run",
              [&context] { listRules(context); });
    addMember(*group, context, "import-templates", "Add the built-in rules that are not there yet",
              [&context] { importTemplates(context); });
    const auto draft = std::make_shared<RuleDraft>();
    addDraftOptions(
        *addMember(*group, context, "add", "Add a rule and print its id", [&context, draft] { add(context, *draft); }),
        *draft);
    const auto id = std::make_shared<Uuid>();
    addIdArgument(*addMember(*group, context, "remove", "Remove a rule", [&context, id] { remove(context, *id); }),
                  *id);
    for (const bool isEnabled : {true, false})
        addIdArgument(*addMember(*group, context, isEnabled ? "enable" : "disable",
                                 isEnabled ? "Let a rule run" : "Keep a rule that does not run",
                                 [&context, id, isEnabled] { enable(context, *id, isEnabled); }),
                      *id);
}

}  // namespace quorvane::cli
