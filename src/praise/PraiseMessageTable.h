#pragma once

#include "praise/PraiseMessage.h"

#include <vector>

/// The table itself, from resources/praise/messages.json. It is parsed on first use and never changes.
namespace quorvane::PraiseMessageDatabase {

/// The rows in the order of the file.
[[nodiscard]] const std::vector<MultilingualPraiseMessage>& table();

/// What is said where the table has nothing in a language: a row in all of them, without bounds.
[[nodiscard]] const MultilingualPraiseMessage& fallbackRow();

}  // namespace quorvane::PraiseMessageDatabase
