#include "shell/state/RuleRow.h"

#include "base/Text.h"
#include "rules/RuleDraft.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

std::string conditionInWords(const Rule& rule, const RuleDraft& draft, const Localization& localization) {
    const auto conditions = readRuleConditions(rule.condition());
    if (!conditions || conditions->empty()) return localization.text("not_set");
    const auto words = localization.text("ui_rule_condition", label(draft.field, localization),
                                         label(draft.matchOperator, localization), draft.value);
    const std::size_t more = conditions->size() - 1;
    return more == 0 ? words : fmt::format("{} {}", words, localization.text("ui_more_items", more));
}

}  // namespace

bool RuleRow::matches(std::string_view search) const {
    if (search.empty()) return true;
    const auto contains = [search](const std::string& text) { return text::containsFolded(text, search); };
    return contains(name) || contains(condition) || (project && contains(project->name)) ||
           std::any_of(words.begin(), words.end(), contains);
}

std::string RuleRow::sentence(const Localization& localization) const {
    std::vector<std::string> parts{fmt::format("{}", priority), name};
    if (!isEnabled) parts.push_back(localization.text("ui_rule_off"));
    parts.push_back(condition);
    if (project) parts.push_back(project->name);
    parts.insert(parts.end(), words.begin(), words.end());
    return text::joined(parts, localization.text("list_separator"));
}

RuleRow describe(const std::shared_ptr<Rule>& rule, const std::vector<std::shared_ptr<Project>>& projects,
                 const Localization& localization) {
    const RuleDraft draft(*rule);
    RuleRow row{.rule = rule,
                .priority = draft.priority,
                .name = draft.name,
                .condition = conditionInWords(*rule, draft, localization),
                .words = {},
                .isEnabled = draft.isEnabled};
    const auto project = std::find_if(projects.begin(), projects.end(),
                                      [&draft](const auto& candidate) { return candidate->id() == draft.projectId; });
    if (project != projects.end()) row.project = {(*project)->name(), (*project)->color().value_or("")};
    if (draft.category) row.words.push_back(StoredNames::shownCategory(*draft.category, localization));
    for (const std::string& tag : draft.parsedTags())
        row.words.push_back(StoredNames::shownTag(tag, localization));
    return row;
}

}  // namespace quorvane
