#pragma once

#include "l10n/Localization.h"
#include "timeline/ClockHours.h"
#include "timeline/HourLayout.h"
#include "timeline/ProcessedActivityItem.h"
#include "timeline/TimelineViewMode.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorvane {

/// A point on the chart, in points from its top left corner.
struct ChartPoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

/// The rectangle of a drag, by two corners in any order.
struct SelectionRect {
    ChartPoint start;
    ChartPoint end;
    friend bool operator==(const SelectionRect&, const SelectionRect&) = default;
};

/// Where things stand on the day chart, and what its gestures mean. All lengths are in points.
namespace DayTimelineGeometry {

inline constexpr double gutterWidth = 50;
inline constexpr double minHourHeight = 30;
inline constexpr double maxHourHeight = 360;
inline constexpr double zoomStep = 60;
inline constexpr double leastDrag = 10;  ///< a shorter one is a click

/// What a width has room for.
struct Widths {
    double hourColumn = 0;  ///< with the gutter
    double drawing = 0;     ///< without it
    bool showsSidePanel = false;
    bool showsLeftList = false;
    double leftList = 0;
    double detailsPanel = 0;
    double projectPanel = 0;
    friend bool operator==(const Widths&, const Widths&) = default;
};
[[nodiscard]] Widths widths(double width, TimelineViewMode mode);

enum class HeaderDensity { minimal, small, regular };
[[nodiscard]] HeaderDensity headerDensity(double width);
[[nodiscard]] double headerSpacing(HeaderDensity density);

/// One line of the grid, from the gutter to the right edge.
struct GridLine {
    enum class Form { solid, half, quarter };  ///< solid; dashed 6-6; dashed 2-2
    double y = 0;
    Form form = Form::solid;
    double opacity = 0;  ///< of grey
    friend bool operator==(const GridLine&, const GridLine&) = default;
};
/// Four for each hour; none on a chart that is no wider than its gutter.
[[nodiscard]] std::vector<GridLine> gridLines(const HourLayout& layout, const std::set<int>& activeHours, double width);

/// The hour at the nearest quarter if that is at most 1.2 minutes away, else the hour as it is.
[[nodiscard]] double snapHour(double hour);

/// The range between two hours as a drag leaves it: drawn to quarters, and of 15 minutes at least.
[[nodiscard]] TimeRange magnetizedRange(double startHour, double endHour);

/// The range that a drag selects; none for one that is too short to be a drag.
[[nodiscard]] std::optional<TimeRange> selectedRange(const SelectionRect& drag, const HourLayout& layout);

/// From left to right: the part of a chart's width that is a lane's. A narrow gap lies between two lanes.
struct LaneSpan {
    double left = 0;
    double width = 0;
    friend bool operator==(const LaneSpan&, const LaneSpan&) = default;
};
[[nodiscard]] LaneSpan laneSpan(const Lane& lane, double width);

/// The block under a point, the last drawn first; a thin one can be hit 8 points high. None beside the drawing.
[[nodiscard]] const ProcessedActivityItem* hitTest(const std::vector<ProcessedActivityItem>& items, ChartPoint point,
                                                   double width);

/// Where in its row an hour stands, as the part of the view at which the row has to be shown for the hour to be in the
/// middle: 0 to 1.
[[nodiscard]] double centringFraction(const HourLayout& layout, double hour);

/// What the tooltips say, line by line.
[[nodiscard]] std::vector<std::string> tooltipLines(const ProcessedActivityItem& item,
                                                    const Localization& localization);
[[nodiscard]] std::vector<std::string> tooltipLines(const TimeRange& range, ChartPoint mouse, double hourHeight,
                                                    const Localization& localization);

}  // namespace DayTimelineGeometry
}  // namespace quorvane
