#pragma once

#include "base/RawValue.h"
#include "base/Uuid.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// What of a record a condition looks at: an attribute of that name, or the host of its `url`.
enum class RuleField { appBundleId, appName, windowTitle, urlHost, url, documentPath };

template <>
struct RawValues<RuleField> {
    static constexpr RawValueTable<RuleField, 6> table{{{RuleField::appBundleId, "appBundleId"},
                                                        {RuleField::appName, "appName"},
                                                        {RuleField::windowTitle, "windowTitle"},
                                                        {RuleField::urlHost, "urlHost"},
                                                        {RuleField::url, "url"},
                                                        {RuleField::documentPath, "documentPath"}}};
};

/// How a condition compares.
enum class RuleOperator { contains, equals, prefix, regex };

template <>
struct RawValues<RuleOperator> {
    static constexpr RawValueTable<RuleOperator, 4> table{{{RuleOperator::contains, "contains"},
                                                           {RuleOperator::equals, "equals"},
                                                           {RuleOperator::prefix, "prefix"},
                                                           {RuleOperator::regex, "regex"}}};
};

/// One test of a rule: a field of the record against a text. Stored as JSON with the keys "id", "field", "operator" and
/// "value", all of which have to be there. Field and operator are kept as they were stored, known or not.
struct RuleCondition {
    Uuid id;
    std::string field;
    std::string matchOperator;
    std::string value;
    friend bool operator==(const RuleCondition&, const RuleCondition&) = default;
};

/// All tests of a rule, in their order. Stored as JSON under the key "conditions".
struct RuleConditionSet {
    std::vector<RuleCondition> conditions;
    friend bool operator==(const RuleConditionSet&, const RuleConditionSet&) = default;

    /// JSON with sorted keys.
    [[nodiscard]] std::string json() const;
};

/// The conditions that a rule stores: those of a set, or a single condition that stands alone, as older rows have it.
/// None if the text is neither.
[[nodiscard]] std::optional<std::vector<RuleCondition>> readRuleConditions(std::string_view json);

}  // namespace quorvane
