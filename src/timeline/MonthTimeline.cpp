#include "timeline/MonthTimeline.h"

#include "base/TimeText.h"
#include "timeline/AppColorPalette.h"
#include "timeline/ProjectTone.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>

namespace quorvane::MonthTimeline {
namespace {

struct Item {
    const TimelineRecordSnapshot* record;
    Seconds length;
};

/// In a cell an open record counts up to the start of the day.
Seconds lengthOn(Date date, const TimelineRecordSnapshot& record, Date now) {
    return std::min(record.endTime.value_or(date), now) - record.startTime;
}

/// Longest first, among equals the smaller id first.
std::vector<Item> longItems(Date date, const DayRecords& records, Date now) {
    std::vector<Item> items;
    for (const TimelineRecordSnapshot* record : records)
        if (const Seconds length = lengthOn(date, *record, now); length >= overviewMinimumLength)
            items.push_back({record, length});
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
        return a.length != b.length ? a.length > b.length : a.record->id < b.record->id;
    });
    return items;
}

std::optional<std::string> fallbackText(Date date, const DayRecords& records, Date now) {
    double hours = 0;
    for (const TimelineRecordSnapshot* record : records)
        hours += lengthOn(date, *record, now) / 1h;
    return hours > 0 ? std::optional(fmt::format("{:.1f}h", hours)) : std::nullopt;
}

MonthCellLine lineOf(const TimelineAnnotation& annotation) {
    return {.name = annotation.projectName.value_or("Unknown"),
            .duration = lengthText(annotation.endTime - annotation.startTime),
            .mark = AppColorPalette::projectColor(annotation.projectColor.value_or(""), true)};
}

MonthCellLine lineOf(const Item& item) {
    const TimelineRecordSnapshot& record = *item.record;
    return {.name = record.displayName(),
            .duration = lengthText(item.length),
            .mark = AppColorPalette::appColor(record.bundleId, record.appName)};
}

/// The starts of all days of the month: from day to day, as some are longer and some were left out.
std::vector<Date> daysOfMonth(Date date, const Calendar& userCalendar) {
    const auto month = userCalendar.month(date);
    std::vector<Date> days;
    for (Date day = month.start; day < month.end; day = userCalendar.day(day).end)
        days.push_back(day);
    return days;
}

}  // namespace

int room(double height) {
    return std::clamp(static_cast<int>((height - 26) / 13), 3, 5);
}

MonthSimpleCell cell(Date date, const DayRecords& records, const Input& input, const Calendar& userCalendar,
                     const Calendar& calendar) {
    MonthSimpleCell made{.date = date,
                         .dayOfMonth = userCalendar.components(date).day,
                         .isToday = calendar.isSameDay(date, input.now),
                         .hasRecords = !records.empty(),
                         .lines = {},
                         .fallback = {}};
    const auto day = timelineDay(date, calendar);
    const auto most = static_cast<std::size_t>(room(input.height));
    const auto items = longItems(date, records, input.now);
    std::size_t total = items.size();
    for (const TimelineAnnotation& annotation : input.annotations) {
        if (annotation.startTime >= day.end || annotation.endTime <= day.start) continue;
        ++total;
        if (made.lines.size() < most) made.lines.push_back(lineOf(annotation));
    }
    for (auto item = items.begin(); item != items.end() && made.lines.size() < most; ++item)
        made.lines.push_back(lineOf(*item));
    made.more = static_cast<int>(total - made.lines.size());
    if (total == 0) made.fallback = fallbackText(date, records, input.now);
    return made;
}

MonthGrid grid(Date date, const Input& input, ConsoleSink& console, const Calendar& userCalendar,
               const Calendar& calendar) {
    const auto days = daysOfMonth(date, userCalendar);
    const auto records = recordsForDates(input.records, days, input.now, 0s, console, calendar);
    MonthGrid made;
    made.leading = (userCalendar.components(days.front()).weekday - userCalendar.firstWeekday() + 7) % 7;
    for (std::size_t i = 0; i < days.size(); ++i)
        made.cells.push_back(cell(days[i], records[i], input, userCalendar, calendar));
    return made;
}

}  // namespace quorvane::MonthTimeline
