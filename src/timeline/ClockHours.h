#pragma once

#include "base/Calendar.h"
#include "base/Date.h"

namespace quorvane {

/// A stretch of a day, in hours on the clock from midnight.
struct TimeRange {
    double startHour = 0;
    double endHour = 0;
    friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

/// Where a stretch stands on the clock of the day on which it begins: for all that is drawn on a day alike. On days on
/// which clocks change it may be shorter or longer than it lasts; only if the clock shows no later time at its end than
/// at its start is it as long as it lasts.
[[nodiscard]] TimeRange clockHours(DateInterval stretch, const Calendar& calendar);

/// The instants at which the clock shows these hours on the day of `date`, the other way round. A time that happens
/// twice is the first one, a time that is left out the end of the gap.
[[nodiscard]] DateInterval instantsAt(const TimeRange& hours, Date date, const Calendar& calendar);

}  // namespace quorvane
