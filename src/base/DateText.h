#pragma once

#include "base/Date.h"

#include <string>

/// Instants as texts, in the local time zone. From any thread.
namespace quorvane {

/// By a pattern of Unicode's ("yyyy-MM-dd") in the Gregorian calendar; the same in every language.
[[nodiscard]] std::string localDateText(Date date, const char* pattern);

/// The fields that a skeleton of Unicode's names ("yMMMMd"), as the user's locale writes them.
[[nodiscard]] std::string localeDateText(Date date, const char* skeleton);

/// Date and time at medium length, as the user's locale writes them: "Mar 4, 2026, 3:00:00 PM".
[[nodiscard]] std::string mediumDateTime(Date date);

/// The date alone, at medium length: "Mar 4, 2026".
[[nodiscard]] std::string mediumDate(Date date);

/// The date alone, at long length: "March 4, 2026".
[[nodiscard]] std::string longDate(Date date);

/// The date at medium length, the time without seconds: "Mar 4, 2026, 3:00 PM".
[[nodiscard]] std::string mediumDateShortTime(Date date);

/// Date in numbers, time without seconds: "3/4/2026, 3:00 PM".
[[nodiscard]] std::string numericDateShortTime(Date date);

}  // namespace quorvane
