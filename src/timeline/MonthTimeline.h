#pragma once

#include "base/Color.h"
#include "timeline/RecordsForDate.h"
#include "timeline/TimelineAnnotation.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvane {

/// An item of a day: a mark of its colour, a name and how long it took.
struct MonthCellLine {
    std::string name;
    std::string duration;  ///< "1h30m"
    Color mark;
    friend bool operator==(const MonthCellLine&, const MonthCellLine&) = default;
};

struct MonthSimpleCell {
    Date date;           ///< start of the day
    int dayOfMonth = 1;  ///< in the user's calendar
    bool isToday = false;
    bool hasRecords = false;
    std::vector<MonthCellLine> lines;     ///< what was given to projects, then activities, longest first
    int more = 0;                         ///< items that found no room
    std::optional<std::string> fallback;  ///< "1.2h": where there is no item, the sum of what is too short to be one
    friend bool operator==(const MonthSimpleCell&, const MonthSimpleCell&) = default;
};

struct MonthGrid {
    int leading = 0;  ///< blank cells before the first day, 0 to 6
    std::vector<MonthSimpleCell> cells;
    friend bool operator==(const MonthGrid&, const MonthGrid&) = default;
};

/// The month beside the day chart: a calendar whose cells list the larger items of a day. Values in, values out; main
/// thread only.
namespace MonthTimeline {

inline constexpr double cellHeight = 85;

/// Annotations stand in the order in which they are given.
struct Input {
    std::span<const TimelineRecordSnapshot> records;
    std::span<const TimelineAnnotation> annotations;
    Date now;
    double height = cellHeight;
};

/// How many items a cell of this height lists: 3 to 5.
[[nodiscard]] int room(double height);

/// The cell of the day that begins at `date`, from all records of that day, short ones included. `userCalendar` counts
/// the days of the month; `calendar` says when the day ends.
[[nodiscard]] MonthSimpleCell cell(Date date, const DayRecords& records, const Input& input,
                                   const Calendar& userCalendar, const Calendar& calendar = timelineCalendar());

/// The month of `date`, as the user's calendar has it.
[[nodiscard]] MonthGrid grid(Date date, const Input& input, ConsoleSink& console, const Calendar& userCalendar,
                             const Calendar& calendar = timelineCalendar());

}  // namespace MonthTimeline
}  // namespace quorvane
