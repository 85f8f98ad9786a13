#include "timeline/DayTimelineGeometry.h"

#include "base/TimeText.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>

namespace quorvane::DayTimelineGeometry {
namespace {

constexpr double timelineWidth = 460;
constexpr double sidebarWidth = 300;
constexpr double leastColumn = 320;
constexpr double leastDrawing = 270;
constexpr double sidePanelFrom = 860;
constexpr double leftListFrom = 1040;
constexpr double widestGap = 2;          // between lanes
constexpr double leastHeight = 8;        // of a block, for the pointer
constexpr double magneticMinutes = 1.2;  // on both sides of a quarter
constexpr double leastRange = 0.25;      // hours
constexpr double leastSelection = 0.05;  // hours

double gapBetween(const Lane& lane, double width) {
    return lane.count < 2 ? 0 : std::min(widestGap, (width - gutterWidth) / lane.count / 4);
}

}  // namespace

Widths widths(double width, TimelineViewMode mode) {
    const double column = std::max(leastColumn, std::min(timelineWidth + gutterWidth, width));
    const bool isDay = mode == TimelineViewMode::day;
    return {.hourColumn = column,
            .drawing = std::max(leastDrawing, column - gutterWidth),
            .showsSidePanel = isDay && width >= sidePanelFrom,
            .showsLeftList = isDay && width >= leftListFrom,
            .leftList = std::min(width * 0.2, 250.0),
            .detailsPanel = std::min(width * 0.28, 280.0),
            .projectPanel = std::min(sidebarWidth, width * 0.3)};
}

HeaderDensity headerDensity(double width) {
    return width < 500 ? HeaderDensity::minimal : width < 700 ? HeaderDensity::small : HeaderDensity::regular;
}

double headerSpacing(HeaderDensity density) {
    return density == HeaderDensity::regular ? 16 : 8;
}

std::vector<GridLine> gridLines(const HourLayout& layout, const std::set<int>& activeHours, double width) {
    using enum GridLine::Form;
    struct Quarter {
        GridLine::Form form;
        double active;
        double inactive;
    };
    static constexpr std::array<Quarter, 4> quarters{
        {{solid, 0.45, 0.25}, {quarter, 0.25, 0.10}, {half, 0.30, 0.15}, {quarter, 0.25, 0.10}}};
    std::vector<GridLine> lines;
    if (width <= gutterWidth) return lines;
    for (int hour = 0; hour < 24; ++hour) {
        const double offset = layout.offsets()[static_cast<std::size_t>(hour)];
        const double span = layout.offsets()[static_cast<std::size_t>(hour) + 1] - offset;
        if (span <= 0) continue;
        const bool isActive = activeHours.contains(hour);
        for (std::size_t k = 0; k < quarters.size(); ++k)
            lines.push_back({.y = offset + span * static_cast<double>(k) * 0.25,
                             .form = quarters[k].form,
                             .opacity = isActive ? quarters[k].active : quarters[k].inactive});
    }
    return lines;
}

double snapHour(double hour) {
    const double whole = std::trunc(hour);
    const double minutes = (hour - whole) * 60;
    double best = 0;
    double distance = std::min(std::abs(minutes), 60.0);
    for (const double mark : {15.0, 30.0, 45.0})
        if (const double other = std::abs(minutes - mark); other < distance) {
            best = mark;
            distance = other;
        }
    return distance > magneticMinutes ? hour : whole + best / 60;
}

TimeRange magnetizedRange(double startHour, double endHour) {
    const double start = snapHour(startHour);
    return {start, std::max(start + leastRange, snapHour(endHour))};
}

std::optional<TimeRange> selectedRange(const SelectionRect& drag, const HourLayout& layout) {
    if (std::hypot(drag.end.x - drag.start.x, drag.end.y - drag.start.y) < leastDrag) return std::nullopt;
    const auto [low, high] = std::minmax(drag.start.y, drag.end.y);
    const TimeRange range = magnetizedRange(std::max(layout.hourForY(low), 0.0), std::min(layout.hourForY(high), 24.0));
    return range.endHour - range.startHour > leastSelection ? std::optional(range) : std::nullopt;
}

LaneSpan laneSpan(const Lane& lane, double width) {
    const double gap = gapBetween(lane, width);
    const double step = (width - gutterWidth + gap) / lane.count;
    return {gutterWidth + step * lane.index, step - gap};
}

const ProcessedActivityItem* hitTest(const std::vector<ProcessedActivityItem>& items, ChartPoint point, double width) {
    if (point.x < gutterWidth || point.x > width) return nullptr;
    const auto hit = std::find_if(items.rbegin(), items.rend(), [&](const ProcessedActivityItem& item) {
        if (point.y < item.yTop || point.y > std::max(item.yTop + leastHeight, item.yBottom)) return false;
        const auto [left, laneWidth] = laneSpan(item.lane, width);
        return left <= point.x && point.x <= left + laneWidth;
    });
    return hit == items.rend() ? nullptr : &*hit;
}

double centringFraction(const HourLayout& layout, double hour) {
    const double row = std::trunc(hour);
    const double top = layout.yPosition(row);
    const double height = layout.yPosition(row + 1) - top;
    return height > 0 ? std::clamp(0.5 - (layout.yPosition(hour) - top) / height, 0.0, 1.0) : 0.0;
}

std::vector<std::string> tooltipLines(const ProcessedActivityItem& item, const Localization& localization) {
    return {StoredNames::shownApp(item.appName, localization), item.windowTitle.value_or(""),
            localization.text("timeline_tooltip_duration", fmt::format("{:.1f}", item.duration))};
}

std::vector<std::string> tooltipLines(const TimeRange& range, ChartPoint mouse, double hourHeight,
                                      const Localization& localization) {
    return {localization.text("timeline_tooltip_range", clockText(range.startHour * 1h), clockText(range.endHour * 1h)),
            localization.text("timeline_tooltip_pointer", fmt::format("{:.1f}", mouse.y / hourHeight))};
}

}  // namespace quorvane::DayTimelineGeometry
