#pragma once

#include "base/RegularExpressionSearch.h"
#include "rules/RuleCondition.h"
#include "store/ActivityRecord.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// One record under the conditions of many rules: what they look at is prepared once. The record outlives it, and what
/// conditions look at stays as it is meanwhile.
class RuleMatch {
public:
    explicit RuleMatch(const ActivityRecord& record) : record_(record) {}

    /// Do the conditions hold, combined as `type` says: "or" in any case for one of them, any other text for all? No
    /// conditions never hold, and neither does a condition with a blank value or an unknown operator.
    [[nodiscard]] bool matches(const std::string& type, const std::vector<RuleCondition>& conditions);

private:
    struct Subject {
        std::string text;
        std::optional<std::string> folded{};
        std::optional<std::string> lowercased{};
    };

    /// False also where there is nothing to test with: a blank value, an unknown operator.
    [[nodiscard]] bool holds(const RuleCondition& condition);
    [[nodiscard]] Subject& subject(std::string_view field);
    [[nodiscard]] std::string subjectText(RuleField field) const;

    const ActivityRecord& record_;
    std::array<std::optional<Subject>, RawValues<RuleField>::table.size()> subjects_;
    Subject nothing_;  ///< of a field that nobody knows
    RegularExpressionSearch search_;
};

}  // namespace quorvane
