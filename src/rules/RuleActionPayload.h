#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// What a rule does to a record that it matches. Stored as JSON; what is none isn't written, and a key that nobody
/// knows is passed over.
struct RuleActionPayload {
    std::optional<std::string> category;
    std::optional<std::string> projectId;  ///< a UUID's text
    std::optional<std::vector<std::string>> tags;
    std::optional<bool> stopProcessing;
    friend bool operator==(const RuleActionPayload&, const RuleActionPayload&) = default;

    /// JSON with sorted keys.
    [[nodiscard]] std::string json() const;
};

/// None if the text is no object, or a key's value is of another kind than its field.
[[nodiscard]] std::optional<RuleActionPayload> readRuleAction(std::string_view json);

}  // namespace quorvane
