#pragma once

#include "praise/PraiseCategory.h"
#include "store/SupportedLanguage.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Templates by language; not every row has every language.
using PraiseTemplates = std::map<SupportedLanguage, std::string>;

/// A row of the table of praise.
struct MultilingualPraiseMessage {
    std::string id;  ///< not unique: "future_002" stands twice
    PraiseCategory category = PraiseCategory::motivation;
    PraiseTemplates messages;                          ///< may hold "{hours}"
    std::optional<std::string> condition{};            ///< when the row fits, for readers of the table alone
    std::optional<double> minHours{};                  ///< shown from so many hours on
    std::optional<double> maxHours{};                  ///< and up to so many
    std::optional<std::vector<std::string>> appTypes;  ///< names of applications, one of which was used
    std::optional<PraiseTemplates> reasonTemplates{};  ///< may hold "{appName}" and "{hours}"
    friend bool operator==(const MultilingualPraiseMessage&, const MultilingualPraiseMessage&) = default;
};

/// The same row in one language; its templates are not filled in.
struct PraiseMessage {
    std::string id;
    PraiseCategory category = PraiseCategory::motivation;
    std::string message;
    std::optional<std::string> condition{};
    std::optional<double> minHours{};
    std::optional<double> maxHours{};
    std::optional<std::vector<std::string>> appTypes{};
    std::optional<std::string> reasonTemplate{};
    friend bool operator==(const PraiseMessage&, const PraiseMessage&) = default;
};

/// The language that is in force, and the one that was chosen by hand, which goes before it.
struct PraiseLanguage {
    SupportedLanguage effective = SupportedLanguage::chinese;
    std::optional<SupportedLanguage> selected{};
};

/// A template, and the language in which it is.
struct PraiseTemplate {
    SupportedLanguage language = SupportedLanguage::chinese;
    std::string text;
};

/// The template in the chosen language, in the one in force, or in Chinese, whichever comes first; a plain one as a
/// last resort.
[[nodiscard]] PraiseTemplate messageTemplate(const MultilingualPraiseMessage& row, const PraiseLanguage& language);

/// The template of the reason in the chosen language, in the one in force, in Chinese, or in English, whichever comes
/// first; none where the row gives no reason.
[[nodiscard]] std::optional<PraiseTemplate> reasonTemplate(const MultilingualPraiseMessage& row,
                                                           const PraiseLanguage& language);

[[nodiscard]] PraiseMessage inLanguage(const MultilingualPraiseMessage& row, const PraiseLanguage& language);

}  // namespace quorvane
