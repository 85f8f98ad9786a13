#include "rules/RuleDraft.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "rules/RuleActionPayload.h"
#include "store/StoredNames.h"

#include <algorithm>

namespace quorvane {
namespace {

bool isBlank(const std::string& text) {
    return text::trimmedWithNewlines(text).empty();
}

}  // namespace

RuleDraft::RuleDraft(const Rule& rule) : name(rule.name()), priority(rule.priority()), isEnabled(rule.isEnabled()) {
    if (const auto conditions = readRuleConditions(rule.condition()); conditions && !conditions->empty()) {
        const RuleCondition& condition = conditions->front();
        field = fromRawValue<Field>(condition.field).value_or(Field::appName);
        matchOperator = fromRawValue<MatchOperator>(condition.matchOperator).value_or(MatchOperator::contains);
        value = condition.value;
    }
    if (const auto payload = readRuleAction(rule.action())) {
        category = payload->category;
        projectId = payload->projectId ? Uuid::parse(*payload->projectId) : std::nullopt;
        tags = text::joined(payload->tags.value_or(std::vector<std::string>()), ", ");
        stopProcessing = payload->stopProcessing.value_or(false);
    }
}

std::vector<std::string> RuleDraft::parsedTags() const {
    std::vector<std::string> parsed;
    for (const std::string& piece : text::split(tags, ','))
        if (auto tag = text::trimmedWithNewlines(piece); !tag.empty()) parsed.push_back(std::move(tag));
    return parsed;
}

bool RuleDraft::canSave() const {
    return !isBlank(name) && !isBlank(value) && (category || projectId || !parsedTags().empty());
}

RuleDraft::RuleData RuleDraft::makeRuleData() const {
    const RuleConditionSet set{{{.id = Uuid::random(),
                                 .field = std::string(rawValue(field)),
                                 .matchOperator = std::string(rawValue(matchOperator)),
                                 .value = value}}};
    const RuleActionPayload payload{.category = category,
                                    .projectId = projectId ? std::optional(projectId->string()) : std::nullopt,
                                    .tags = parsedTags(),
                                    .stopProcessing = stopProcessing};
    return {.condition = set.json(), .action = payload.json()};
}

void RuleDraft::writeTo(Rule& rule) const {
    auto data = makeRuleData();
    rule.name = name;
    rule.priority = priority;
    rule.isEnabled = isEnabled;
    rule.type = "and";
    rule.condition = std::move(data.condition);
    rule.action = std::move(data.action);
    rule.updatedAt = platform::currentDate();
}

std::string RuleDraft::summary(const Localization& localization,
                               const std::vector<std::shared_ptr<Project>>& projects) const {
    std::vector<std::string> sentences;
    if (category)
        sentences.push_back(
            localization.text("rule_summary_category", StoredNames::shownCategory(*category, localization)));
    const auto project = std::find_if(projects.begin(), projects.end(),
                                      [this](const auto& candidate) { return candidate->id() == projectId; });
    if (project != projects.end()) sentences.push_back(localization.text("rule_summary_project", (*project)->name()));
    auto shownTags = parsedTags();
    for (std::string& tag : shownTags)
        tag = StoredNames::shownTag(tag, localization);
    if (!shownTags.empty())
        sentences.push_back(
            localization.text("rule_summary_tags", text::joined(shownTags, localization.text("list_separator"))));
    if (sentences.empty()) sentences.push_back(localization.text("rule_summary_no_action"));
    return localization.text("rule_summary_template", label(field, localization), label(matchOperator, localization),
                             value, text::joined(sentences, localization.text("sentence_separator")));
}

std::string label(RuleDraft::Field field, const Localization& localization) {
    switch (field) {
    case RuleDraft::Field::appBundleId: return "Bundle ID";
    case RuleDraft::Field::appName: return localization.text("rule_field_app_name");
    case RuleDraft::Field::windowTitle: return localization.text("rule_field_window_title");
    case RuleDraft::Field::urlHost: return localization.text("rule_field_url_host");
    case RuleDraft::Field::url: return localization.text("rule_field_full_url");
    case RuleDraft::Field::documentPath: return localization.text("rule_field_document_path");
    }
    return {};
}

std::string placeholder(RuleDraft::Field field, const Localization& localization) {
    switch (field) {
    case RuleDraft::Field::appBundleId: return localization.text("rule_placeholder_bundle");
    case RuleDraft::Field::appName: return localization.text("rule_placeholder_app");
    case RuleDraft::Field::windowTitle: return localization.text("rule_placeholder_window");
    case RuleDraft::Field::urlHost: return localization.text("rule_placeholder_host");
    case RuleDraft::Field::url: return localization.text("rule_placeholder_url");
    case RuleDraft::Field::documentPath: return localization.text("rule_placeholder_document");
    }
    return {};
}

std::string label(RuleDraft::MatchOperator matchOperator, const Localization& localization) {
    switch (matchOperator) {
    case RuleDraft::MatchOperator::contains: return localization.text("operator_contains");
    case RuleDraft::MatchOperator::equals: return localization.text("operator_equals");
    case RuleDraft::MatchOperator::prefix: return localization.text("operator_prefix");
    case RuleDraft::MatchOperator::regex: return localization.text("operator_regex");
    }
    return {};
}

}  // namespace quorvane
