#pragma once

#include "base/Uuid.h"
#include "l10n/Localization.h"
#include "store/ActivityCategory.h"
#include "store/ModelContext.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quorvane {

/// Applications of one kind, from which a rule for each is made.
struct BuiltInRuleTemplate {
    std::string_view id;
    TextKey nameKey;
    std::span<const std::string_view> appNames;  ///< as the application shows itself, in any of its languages
    ActivityCategory category;
    std::span<const TextKey> tagKeys;
    std::int64_t priority;
};

namespace BuiltInRuleTemplates {

/// The seven templates in their order.
[[nodiscard]] std::span<const BuiltInRuleTemplate> all();

/// The id of the condition for an application of a template: always the same, so that repeated imports write the same
/// text.
[[nodiscard]] Uuid conditionId(std::string_view templateId, std::string_view appName);

struct ImportResult {
    std::size_t imported = 0;
    std::size_t skipped = 0;  ///< there already, by their signature
    friend bool operator==(const ImportResult&, const ImportResult&) = default;
};

/// Inserts one rule for each application of each template, but those whose signature a rule of the store has, and
/// saves. Tags are words of the present language: after a change of language all are new. A failed save leaves the
/// rules unsaved in the context, and nothing is reported; throws `StoreError` when the rules can't be read.
ImportResult importAll(ModelContext& context, const Localization& localization);

/// What the user is told of it.
[[nodiscard]] std::string message(const ImportResult& result, const Localization& localization);

}  // namespace BuiltInRuleTemplates
}  // namespace quorvane
