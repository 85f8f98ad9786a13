#pragma once

#include "l10n/Localization.h"
#include "store/Project.h"
#include "store/Rule.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// What a list says of a rule, in the user's language.
struct RuleRow {
    struct Target {
        std::string name;
        std::string color;  ///< the name of a tone; empty for none
        friend bool operator==(const Target&, const Target&) = default;
    };

    std::shared_ptr<Rule> rule;
    std::int64_t priority = 0;
    std::string name;
    std::string condition;           ///< the first one in words, and how many more there are
    std::optional<Target> project;   ///< none also if the store has none with the rule's id
    std::vector<std::string> words;  ///< the category, if it sets one, and the tags
    bool isEnabled = true;
    friend bool operator==(const RuleRow&, const RuleRow&) = default;

    /// Does any of its texts contain the search, whatever case and diacritics? An empty search finds all.
    [[nodiscard]] bool matches(std::string_view search) const;
    /// All of it in one line, for assistive technology.
    [[nodiscard]] std::string sentence(const Localization& localization) const;
};

[[nodiscard]] RuleRow describe(const std::shared_ptr<Rule>& rule, const std::vector<std::shared_ptr<Project>>& projects,
                               const Localization& localization);

}  // namespace quorvane
