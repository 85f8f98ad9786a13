#pragma once

#include "base/Calendar.h"

namespace quorvane {

/// The calendar of the timeline: Gregorian, weeks from Monday, in the user's zone of now. Main thread only.
[[nodiscard]] const Calendar& timelineCalendar();

/// The day of an instant in it (or in another calendar), from its first instant to one second before the next day.
[[nodiscard]] DateInterval timelineDay(Date date, const Calendar& calendar = timelineCalendar());

}  // namespace quorvane
