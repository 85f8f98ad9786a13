#pragma once

#include "base/Date.h"

#include <string>

/// What stands over the columns of days and over a month, as the user's locale writes it. From any thread.
namespace quorvane {

[[nodiscard]] std::string shortWeekday(Date date);   ///< "Wed"
[[nodiscard]] std::string monthAndYear(Date date);   ///< "March 2026"
[[nodiscard]] std::string weekdayAndDay(Date date);  ///< "Wed, Mar 4"
[[nodiscard]] std::string dayTitle(Date date);       ///< "Wed, 4 March 2026"
/// "2 – 8 March 2026", from the first day of the range to its last.
[[nodiscard]] std::string daysTitle(DateInterval range);

}  // namespace quorvane
