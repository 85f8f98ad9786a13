#pragma once

#include "timeline/TimelineCalendar.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <span>
#include <vector>

/// Which records the week and the month show on a day. Main thread only.
namespace quorvane {

class ConsoleSink;

/// Records of one day, in the order of the list that they point into.
using DayRecords = std::vector<const TimelineRecordSnapshot*>;

/// What is shorter stands in no overview.
inline constexpr Seconds overviewMinimumLength = 300s;

/// The records that share a moment with the day of `date` and last five minutes or more, in all and not only on that
/// day; open ones last to the end of the day, at most until now. None for a date in the future. A record that begins in
/// the future is left out and told in a line.
[[nodiscard]] DayRecords recordsForDate(std::span<const TimelineRecordSnapshot> records, Date date, Date now,
                                        ConsoleSink& console, const Calendar& calendar = timelineCalendar());

/// The same for each of several dates (on different days, ascending) in one pass over the records and with one line for
/// each that begins in the future. Shorter than `minimumLength` (>= 0) is left out.
[[nodiscard]] std::vector<DayRecords> recordsForDates(std::span<const TimelineRecordSnapshot> records,
                                                      std::span<const Date> dates, Date now, Seconds minimumLength,
                                                      ConsoleSink& console,
                                                      const Calendar& calendar = timelineCalendar());

}  // namespace quorvane
