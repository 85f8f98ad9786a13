#pragma once

#include "base/Color.h"
#include "timeline/AnnotationLayout.h"
#include "timeline/Lanes.h"
#include "timeline/ProjectTone.h"
#include "timeline/RecordsForDate.h"
#include "timeline/TimelineAnnotation.h"
#include "timeline/WeekTimelineLabel.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvane {

/// Where a bar stands in its column. Hours count from the start of the day and end at what is visible.
struct WeekBarGeometry {
    double startHour = 0;
    double endHour = 0;
    Lane lane;
    BarFrame frame;  ///< from the column's top left corner
};

struct WeekActivityTimelineBar {
    static constexpr double fillOpacity = 0.6;
    Uuid id;  ///< of the record
    std::string name;
    WeekBarGeometry geometry;
    std::optional<WeekTimelineLabel> label;
    Color color;
};

struct WeekProjectTimelineBar {
    static constexpr double fillOpacity = 0.7;
    Uuid id;  ///< of the annotation
    std::string name;
    WeekBarGeometry geometry;
    std::optional<WeekTimelineLabel> label;
    ProjectTone tone;
};

/// A day of the week: activities on its left half, what was given to projects on its right half.
struct WeekTimelineColumn {
    Date date;  ///< start of the day
    std::vector<WeekActivityTimelineBar> activities;
    std::vector<WeekProjectTimelineBar> projects;
};

/// The week beside the day chart: seven small days of 24 hours at one scale. Values in, values out; main thread only.
namespace WeekTimeline {

inline constexpr double gutterWidth = 50;
inline constexpr double hourHeight = 20;
inline constexpr double columnHeight = 24 * hourHeight;

/// What the columns are made from. Items stand in the order in which they are given; those that overlap share their
/// half of the column in lanes.
struct Input {
    std::span<const TimelineRecordSnapshot> records;
    std::span<const TimelineAnnotation> annotations;
    Date now;
    double columnWidth = 120;
};

/// The Monday of the week, its first instant.
[[nodiscard]] Date weekStart(Date date, const Calendar& calendar = timelineCalendar());

/// The starts of the days of that week.
[[nodiscard]] std::array<Date, 7> days(Date date, const Calendar& calendar = timelineCalendar());

/// The width of a column where the gutter and all seven share `containerWidth`: 100 to 200.
[[nodiscard]] double columnWidth(double containerWidth);

/// "09:00"
[[nodiscard]] std::string hourLabel(int hour);

/// From the start of the day to its end or now; none for a day that has yet to begin.
[[nodiscard]] std::optional<DateInterval> visibleRange(Date date, Date now,
                                                       const Calendar& calendar = timelineCalendar());

/// The column of a day from the records of that day.
[[nodiscard]] WeekTimelineColumn column(Date date, const DayRecords& records, const Input& input,
                                        const Calendar& calendar = timelineCalendar());

/// The seven columns of the week of `date`.
[[nodiscard]] std::vector<WeekTimelineColumn> columns(Date date, const Input& input, ConsoleSink& console,
                                                      const Calendar& calendar = timelineCalendar());

}  // namespace WeekTimeline
}  // namespace quorvane
