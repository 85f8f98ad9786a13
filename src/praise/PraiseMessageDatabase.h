#pragma once

#include "praise/PraiseTexts.h"
#include "praise/RandomIndex.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

class AppSettings;

/// What a praise is asked for.
struct PraiseRequest {
    PraisedDay day;
    const AppSettings* settings = nullptr;                ///< none: the system's language
    std::optional<SupportedLanguage> selectedLanguage{};  ///< goes before the settings
    std::optional<PraiseCategory> category{};             ///< none: what fits the day
    std::optional<std::string> lastId{};                  ///< of the praise before, which is not repeated
};

struct Praise {
    std::string message;
    std::optional<std::string> reason;
    SupportedLanguage language = SupportedLanguage::chinese;
    std::string id;
    const MultilingualPraiseMessage* row = nullptr;  ///< lives as long as the program; an id alone names no row
};

}  // namespace quorvane

/// Picks a sentence about a day out of `table()`. There always is one. Main thread only.
namespace quorvane::PraiseMessageDatabase {

/// The language of a locale: "zh", "zh-Hans", "de". Chinese for all that is missing or unknown.
[[nodiscard]] SupportedLanguage languageOfCode(std::optional<std::string_view> code);

/// The language of the locale for words: the first entry of LANGUAGE, else the first set of LC_ALL, LC_MESSAGES and
/// LANG. The C locale counts as English, an environment without a locale as Chinese.
[[nodiscard]] SupportedLanguage detectSystemLanguage();

/// What fits the day: how long it was, else what the application with the most records is for.
[[nodiscard]] PraiseCategory automaticCategory(const PraisedDay& day);

/// Are the day's hours within the row's bounds, which belong to them, and was one of its applications used, if it names
/// some?
[[nodiscard]] bool fits(const MultilingualPraiseMessage& row, const PraisedDay& day);

/// One of the rows of the category in this language, all equally likely, that fit the hours and the applications; if
/// none does, one of the others. The last one comes again only where there is no other. `fallbackRow()` where the
/// category has nothing in the language.
[[nodiscard]] const MultilingualPraiseMessage& selectMessage(const PraisedDay& day, SupportedLanguage language,
                                                             std::optional<PraiseCategory> category,
                                                             const std::optional<std::string>& lastId,
                                                             const RandomWords& random = secureRandomWord);

/// Selects a row and fills it in.
[[nodiscard]] Praise generatePraise(const PraiseRequest& request, const RandomWords& random = secureRandomWord);

}  // namespace quorvane::PraiseMessageDatabase
