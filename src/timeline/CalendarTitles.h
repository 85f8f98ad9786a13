#pragma once

#include "base/Date.h"

#include <string>

/// What stands over the columns of days and over a month, as the user's locale writes it. From any thread.
namespace quorvane {

[[nodiscard]] std::string shortWeekday(Date date);   ///< "Wed"
[[nodiscard]] std::string monthAndYear(Date date);   ///< "March 2026"
[[nodiscard]] std::string weekdayAndDay(Date date);  ///< "Wed, Mar 4"

}  // namespace quorvane
