#include "rules/RuleEngine.h"

#include "rules/RuleActionPayload.h"
#include "rules/RuleMatch.h"

#include <algorithm>
#include <tuple>

namespace quorvane::RuleEngine {
namespace {

// How sure a record is at least of what a rule said.
constexpr double categoryConfidence = 0.92;
constexpr double projectConfidence = 0.95;
constexpr double tagsConfidence = 0.9;

std::vector<const Rule*> inOrder(const std::vector<std::shared_ptr<Rule>>& rules) {
    std::vector<const Rule*> enabled;
    for (const auto& rule : rules)
        if (rule->isEnabled()) enabled.push_back(rule.get());
    std::stable_sort(enabled.begin(), enabled.end(), [](const Rule* a, const Rule* b) {
        return std::tuple(a->priority(), b->updatedAt()) < std::tuple(b->priority(), a->updatedAt());
    });
    return enabled;
}

void raiseConfidence(ActivityRecord& record, double floor) {
    record.confidence = std::max(record.confidence(), floor);
}

void assignProject(ActivityRecord& record, const std::string& projectId,
                   const std::vector<std::shared_ptr<Project>>& projects) {
    const auto id = Uuid::parse(projectId);
    if (!id) return;
    const auto project =
        std::find_if(projects.begin(), projects.end(), [&](const auto& candidate) { return candidate->id() == *id; });
    if (project == projects.end()) return;
    record.project = *project;
    raiseConfidence(record, projectConfidence);
}

/// Does what the payload says; true if no later rule is wanted.
bool applyAction(ActivityRecord& record, const RuleActionPayload& payload,
                 const std::vector<std::shared_ptr<Project>>& projects) {
    if (payload.category && !payload.category->empty()) {
        record.category = payload.category;
        raiseConfidence(record, categoryConfidence);
    }
    if (payload.projectId) assignProject(record, *payload.projectId, projects);
    if (payload.tags && !payload.tags->empty()) {
        for (const std::string& tag : *payload.tags)
            record.addTag(tag);
        raiseConfidence(record, tagsConfidence);
    }
    return payload.stopProcessing.value_or(false);
}

void extendSource(ActivityRecord& record, const std::string& ruleName) {
    const auto& source = record.source();
    record.source = (source ? *source + "|" : std::string()) + "rule:" + ruleName;
}

}  // namespace

void apply(ActivityRecord& record, const std::vector<std::shared_ptr<Rule>>& rules,
           const std::vector<std::shared_ptr<Project>>& projects) {
    RuleMatch match(record);
    for (const Rule* rule : inOrder(rules)) {
        const auto conditions = readRuleConditions(rule->condition());
        if (!conditions || !match.matches(rule->type(), *conditions)) continue;
        const auto payload = readRuleAction(rule->action());
        const bool isLast = payload && applyAction(record, *payload, projects);
        extendSource(record, rule->name());
        if (isLast) return;
    }
}

}  // namespace quorvane::RuleEngine
