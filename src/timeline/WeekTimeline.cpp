#include "timeline/WeekTimeline.h"

#include "base/TimeText.h"
#include "timeline/AppColorPalette.h"

#include <algorithm>

namespace quorvane::WeekTimeline {
namespace {

constexpr double smallestHeight = 4;
constexpr double gapBetweenLanes = 2;

/// The stretch of an item that is visible, and what else decides where its bar stands.
struct BarPlace {
    DateInterval stretch;
    Date dayStart;
    double columnWidth = 0;
    double left = 0;  ///< of the half of the column
    std::size_t columnIndex = 0;
    std::size_t totalColumns = 1;
};

/// Lanes only alternate: whether two items overlap is not asked.
WeekBarGeometry geometry(const BarPlace& place) {
    const int lanes = place.totalColumns > 1 ? 2 : 1;
    const int lane = static_cast<int>(place.columnIndex % static_cast<std::size_t>(lanes));
    const double startHour = (place.stretch.start - place.dayStart) / 1h;
    const double endHour = (place.stretch.end - place.dayStart) / 1h;
    const double height = std::max((endHour - startHour) * hourHeight, smallestHeight);
    const double laneWidth = place.columnWidth * 0.5 / lanes;
    return {.startHour = startHour,
            .endHour = endHour,
            .lane = lane,
            .lanes = lanes,
            .frame = {.x = place.left + laneWidth * lane + laneWidth * 0.5,
                      .y = startHour * hourHeight + height * 0.5,
                      .width = laneWidth - gapBetweenLanes,
                      .height = height}};
}

Color colorOf(const TimelineRecordSnapshot& record, bool isDark) {
    if (record.bundleId) return AppColorPalette::appColor(record.bundleId, {}, {}, isDark);
    return AppColorPalette::appColor({}, record.appName.value_or("unknown"), {}, isDark);
}

std::vector<WeekActivityTimelineBar> activityBars(const DayRecords& records, DateInterval visible, const Input& input) {
    struct Item {
        const TimelineRecordSnapshot* record;
        DateInterval stretch;
    };
    std::vector<Item> items;
    for (const TimelineRecordSnapshot* record : records) {
        const Date start = std::max(record->startTime, visible.start);
        const Date end = std::min(record->endTime.value_or(visible.end), visible.end);
        if (record->startTime < visible.end && end > visible.start && end - start >= overviewMinimumLength)
            items.push_back({record, {start, end}});
    }
    std::vector<WeekActivityTimelineBar> bars;
    for (const Item& item : items) {
        const auto place = geometry({.stretch = item.stretch,
                                     .dayStart = visible.start,
                                     .columnWidth = input.columnWidth,
                                     .columnIndex = bars.size(),
                                     .totalColumns = items.size()});
        auto name = item.record->appName.value_or("Unknown");
        auto label = weekTimelineLabel(name, place.frame.width, place.frame.height);
        bars.push_back({.id = item.record->id,
                        .name = std::move(name),
                        .geometry = place,
                        .label = std::move(label),
                        .color = colorOf(*item.record, input.isDark)});
    }
    return bars;
}

std::vector<WeekProjectTimelineBar> projectBars(DateInterval visible, const Input& input) {
    std::vector<const TimelineAnnotation*> items;
    for (const TimelineAnnotation& annotation : input.annotations)
        if (annotation.startTime < visible.end && annotation.endTime > visible.start) items.push_back(&annotation);
    std::vector<WeekProjectTimelineBar> bars;
    for (const TimelineAnnotation* item : items) {
        const auto place =
            geometry({.stretch = {std::max(item->startTime, visible.start), std::min(item->endTime, visible.end)},
                      .dayStart = visible.start,
                      .columnWidth = input.columnWidth,
                      .left = input.columnWidth * 0.5,
                      .columnIndex = bars.size(),
                      .totalColumns = items.size()});
        auto name = item->projectName.value_or("Unknown");
        auto label = weekTimelineLabel(name, place.frame.width, place.frame.height);
        bars.push_back({.id = item->id,
                        .name = std::move(name),
                        .geometry = place,
                        .label = std::move(label),
                        .tone = AppColorPalette::projectTone(item->projectColor.value_or(""))});
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
