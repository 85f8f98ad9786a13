#include "rules/RuleSignature.h"

#include "base/Text.h"
#include "rules/RuleActionPayload.h"
#include "rules/RuleCondition.h"

#include <algorithm>

namespace quorvane {
namespace {

std::string conditionSignature(std::string_view json) {
    const auto conditions = readRuleConditions(json);
    if (!conditions) return std::string(json);
    std::vector<std::string> texts;
    for (const RuleCondition& condition : *conditions)
        texts.push_back(condition.field + "|" + condition.matchOperator + "|" + condition.value);
    std::sort(texts.begin(), texts.end());
    return text::joined(texts, "&&");
}

std::string actionSignature(std::string_view json) {
    const auto payload = readRuleAction(json);
    if (!payload) return std::string(json);
    auto tags = payload->tags.value_or(std::vector<std::string>());
    std::sort(tags.begin(), tags.end());
    return payload->category.value_or("") + "|" + payload->projectId.value_or("") + "|" + text::joined(tags, ",") +
           "|" + (payload->stopProcessing.value_or(false) ? "true" : "false");
}

}  // namespace

std::string ruleSignature(std::string_view condition, std::string_view action) {
    return conditionSignature(condition) + "|" + actionSignature(action);
}

std::string ruleSignature(const Rule& rule) {
    return ruleSignature(rule.condition(), rule.action());
}

}  // namespace quorvane
