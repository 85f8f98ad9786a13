#include "timeline/RecordsForDate.h"

#include "diagnostics/ConsoleSink.h"

#include <algorithm>
#include <utility>

namespace quorvane {

DayRecords recordsForDate(std::span<const TimelineRecordSnapshot> records, Date date, Date now, ConsoleSink& console,
                          const Calendar& calendar) {
    return std::move(
        recordsForDates(records, std::span(&date, 1), now, overviewMinimumLength, console, calendar).front());
}

std::vector<DayRecords> recordsForDates(std::span<const TimelineRecordSnapshot> records, std::span<const Date> dates,
                                        Date now, Seconds minimumLength, ConsoleSink& console,
                                        const Calendar& calendar) {
    std::vector<DayRecords> found(dates.size());
    std::vector<DateInterval> days;  // up to today
    for (const Date date : dates)
        if (date <= now) days.push_back(timelineDay(date, calendar));
    if (days.empty()) return found;
    for (const TimelineRecordSnapshot& record : records) {
        if (record.startTime > now) {
            if (!record.isLoginWindow())
                console.line("ContentView: 发现未来日期的记录 - {} 开始时间: {}", record.displayName(),
                             describe(record.startTime));
            continue;
        }
        const Date reach = std::min(record.endTime.value_or(now), now);
        auto day = std::upper_bound(days.begin(), days.end(), record.startTime,
                                    [](Date start, const DateInterval& each) { return start < each.end; });
        if (day == days.end() || day->start >= reach || record.isLoginWindow()) continue;
        for (; day != days.end() && day->start < reach; ++day) {
            const Date end = std::min(record.endTime.value_or(day->end), now);
            if (end - record.startTime >= minimumLength)
                found[static_cast<std::size_t>(day - days.begin())].push_back(&record);
        }
    }
    return found;
}

}  // namespace quorvane
