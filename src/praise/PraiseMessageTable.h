#pragma once

#include "praise/PraiseMessage.h"

#include <array>
#include <string>
#include <vector>

namespace quorvane {

/// What sentences of a language are filled in with.
struct PraiseWords {
    std::string hours;                   ///< after a number of them, with the blank between
    std::array<std::string, 2> minutes;  ///< the same after 1, and after any other number
    std::string someApps;                ///< where no application of the row was used
    std::string unknownApp;
    std::string plain;  ///< a sentence for a row that has none
};

}  // namespace quorvane

/// The table itself, from resources/praise/messages.json. It is parsed on first use and never changes.
namespace quorvane::PraiseMessageDatabase {

/// The rows in the order of the file.
[[nodiscard]] const std::vector<MultilingualPraiseMessage>& table();

/// What is said where the table has nothing in a language: a row in all of them, without bounds.
[[nodiscard]] const MultilingualPraiseMessage& fallbackRow();

[[nodiscard]] const PraiseWords& words(SupportedLanguage language);

}  // namespace quorvane::PraiseMessageDatabase
