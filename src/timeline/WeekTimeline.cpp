#include "timeline/WeekTimeline.h"

#include "base/TimeText.h"
#include "timeline/AppColorPalette.h"

#include <algorithm>

namespace quorvane::WeekTimeline {
namespace {

constexpr double smallestHeight = 4;
constexpr double gapBetweenLanes = 2;

/// The halves of a column: activities stand on the left one, what was given to projects on the right one.
enum class Half { left, right };

WeekBarGeometry geometry(DateInterval stretch, Date dayStart, const Lane& lane, Half half, double columnWidth) {
    const double startHour = (stretch.start - dayStart) / 1h;
    const double endHour = (stretch.end - dayStart) / 1h;
    const double height = std::max((endHour - startHour) * hourHeight, smallestHeight);
    const double left = half == Half::left ? 0 : columnWidth * 0.5;
    const double laneWidth = columnWidth * 0.5 / lane.count;
    return {.startHour = startHour,
            .endHour = endHour,
            .lane = lane,
            .frame = {.x = left + laneWidth * lane.index + laneWidth * 0.5,
                      .y = startHour * hourHeight + height * 0.5,
                      .width = std::max(laneWidth - gapBetweenLanes, laneWidth * 0.5),
                      .height = height}};
}

std::vector<WeekActivityTimelineBar> activityBars(const DayRecords& records, DateInterval visible, const Input& input) {
    DayRecords shown;
    std::vector<LaneItem> items;
    for (const TimelineRecordSnapshot* record : records) {
        const Date start = std::max(record->startTime, visible.start);
        const Date end = std::min(record->endTime.value_or(visible.end), visible.end);
        if (record->startTime >= visible.end || end <= visible.start || end - start < overviewMinimumLength) continue;
        shown.push_back(record);
        items.push_back({record->id, {start, end}});
    }
    const auto lanes = lanesOf(items);
    std::vector<WeekActivityTimelineBar> bars;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto place = geometry(items[i].stretch, visible.start, lanes[i], Half::left, input.columnWidth);
        auto name = shown[i]->appName.value_or("Unknown");
        auto label = weekTimelineLabel(name, place.frame.width, place.frame.height);
        bars.push_back({.id = shown[i]->id,
                        .name = std::move(name),
                        .geometry = place,
                        .label = std::move(label),
                        .color = AppColorPalette::appColor(shown[i]->bundleId, shown[i]->appName)});
    }
    return bars;
}

std::vector<WeekProjectTimelineBar> projectBars(DateInterval visible, const Input& input) {
    std::vector<const TimelineAnnotation*> shown;
    std::vector<LaneItem> items;
    for (const TimelineAnnotation& annotation : input.annotations) {
        if (annotation.startTime >= visible.end || annotation.endTime <= visible.start) continue;
        shown.push_back(&annotation);
        items.push_back({annotation.id,
                         {std::max(annotation.startTime, visible.start), std::min(annotation.endTime, visible.end)}});
    }
    const auto lanes = lanesOf(items);
    std::vector<WeekProjectTimelineBar> bars;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto place = geometry(items[i].stretch, visible.start, lanes[i], Half::right, input.columnWidth);
        auto name = shown[i]->projectName.value_or("Unknown");
        auto label = weekTimelineLabel(name, place.frame.width, place.frame.height);
        bars.push_back({.id = shown[i]->id,
                        .name = std::move(name),
                        .geometry = place,
                        .label = std::move(label),
                        .tone = AppColorPalette::projectTone(shown[i]->projectColor.value_or(""))});
    }
    return bars;
}

}  // namespace

Date weekStart(Date date, const Calendar& calendar) {
    return calendar.week(date).start;
}

std::array<Date, 7> days(Date date, const Calendar& calendar) {
    const Date monday = weekStart(date, calendar);
    std::array<Date, 7> starts;
    for (int i = 0; i < 7; ++i)
        starts[static_cast<std::size_t>(i)] = calendar.startOfDay(calendar.addingDays(i, monday));
    return starts;
}

double columnWidth(double containerWidth) {
    return std::clamp((containerWidth - gutterWidth) / 7, 100.0, 200.0);
}

std::string hourLabel(int hour) {
    return clockText(hour * 1h);
}

std::optional<DateInterval> visibleRange(Date date, Date now, const Calendar& calendar) {
    const auto day = timelineDay(date, calendar);
    if (day.start >= now) return std::nullopt;
    return DateInterval{day.start, std::min(now, day.end)};
}

WeekTimelineColumn column(Date date, const DayRecords& records, const Input& input, const Calendar& calendar) {
    WeekTimelineColumn made{.date = calendar.startOfDay(date), .activities = {}, .projects = {}};
    if (const auto visible = visibleRange(date, input.now, calendar)) {
        made.activities = activityBars(records, *visible, input);
        made.projects = projectBars(*visible, input);
    }
    return made;
}

std::vector<WeekTimelineColumn> columns(Date date, const Input& input, ConsoleSink& console, const Calendar& calendar) {
    const auto week = days(date, calendar);
    const auto records = recordsForDates(input.records, week, input.now, overviewMinimumLength, console, calendar);
    std::vector<WeekTimelineColumn> made;
    for (std::size_t i = 0; i < week.size(); ++i)
        made.push_back(column(week[i], records[i], input, calendar));
    return made;
}

}  // namespace quorvane::WeekTimeline
