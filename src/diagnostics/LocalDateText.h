#pragma once

#include "base/Date.h"

#include <string>

namespace quorvane {

/// The date in the Gregorian calendar and the local time zone, by a pattern of Unicode's ("yyyy-MM-dd"); the same in
/// every language. From any thread.
[[nodiscard]] std::string localDateText(Date date, const char* pattern);

/// Date and time in the local time zone as the user's locale writes them at medium length.
[[nodiscard]] std::string mediumDateText(Date date);

}  // namespace quorvane
