#pragma once

#include "base/Uuid.h"
#include "l10n/Localization.h"
#include "rules/RuleCondition.h"
#include "store/Project.h"
#include "store/Rule.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What the form of a rule holds: one condition and one action. Nothing of it is trimmed but the tags.
struct RuleDraft {
    using Field = RuleField;
    using MatchOperator = RuleOperator;

    /// The two texts that a rule stores.
    struct RuleData {
        std::string condition;
        std::string action;
    };

    std::string name;
    Field field = Field::appName;
    MatchOperator matchOperator = MatchOperator::contains;
    std::string value;
    std::optional<std::string> category;
    std::optional<Uuid> projectId;
    std::string tags;  ///< as typed, separated by commas
    std::int64_t priority = 100;
    bool isEnabled = true;
    bool stopProcessing = false;
    friend bool operator==(const RuleDraft&, const RuleDraft&) = default;

    RuleDraft() = default;

    /// What the form shows of a stored rule: its first condition, an unknown field as `appName`, an unknown operator as
    /// `contains`, and no action where the stored one can't be read.
    explicit RuleDraft(const Rule& rule);

    /// The tags without blanks around them and without empty ones.
    [[nodiscard]] std::vector<std::string> parsedTags() const;

    /// Are name and value more than blanks, and is there something to do?
    [[nodiscard]] bool canSave() const;

    /// The condition gets a fresh id.
    [[nodiscard]] RuleData makeRuleData() const;

    /// Puts the draft into the rule: all its conditions become this one, and `updatedAt` becomes now.
    void writeTo(Rule& rule) const;

    /// The rule in a sentence or two, in the user's language. A project that isn't among `projects` isn't mentioned.
    [[nodiscard]] std::string summary(const Localization& localization,
                                      const std::vector<std::shared_ptr<Project>>& projects) const;
};

/// How the form calls a field and an operator, and the example that it shows in an empty value.
[[nodiscard]] std::string label(RuleDraft::Field field, const Localization& localization);
[[nodiscard]] std::string placeholder(RuleDraft::Field field, const Localization& localization);
[[nodiscard]] std::string label(RuleDraft::MatchOperator matchOperator, const Localization& localization);

}  // namespace quorvane
