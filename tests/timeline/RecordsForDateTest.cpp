#include "timeline/RecordsForDate.h"

#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "timeline/OverviewBuilders.h"

#include <random>

namespace quorvane {
namespace {

std::vector<std::string> namesOf(const DayRecords& records) {
    return mapped(records, [](const auto* record) { return record->displayName(); });
}

class RecordsForDateTest : public testing::Test {
protected:
    std::vector<std::string> namesOn(Date date, const std::vector<TimelineRecordSnapshot>& records) {
        return namesOf(recordsForDate(records, date, now, console, calendar));
    }

    Date now = march(4, "15:00:00");
    Calendar calendar = mondayFirst();
    RecordingConsole console;
};

TEST_F(RecordsForDateTest, KeepsWhatTouchesTheDayAndLastsFiveMinutesInAll) {
    struct Row {
        const char* name;
        Date start;
        std::optional<Date> end;
        bool isOn3rd;
        bool isOn4th;
    };
    const Row rows[] = {
        {"five minutes", march(3, "09:00:00"), march(3, "09:05:00"), true, false},
        {"a moment less", march(3, "09:00:00"), march(3, "09:04:59.999999"), false, false},
        {"over midnight, two minutes of it", march(3, "23:52:00"), march(4, "00:02:00"), true, true},
        {"to midnight", march(3, "23:00:00"), march(4, "00:00:00"), true, false},
        {"from midnight", march(4, "00:00:00"), march(4, "01:00:00"), false, true},
        {"in the last second", march(3, "23:59:59"), march(4, "00:30:00"), false, true},
        {"for days", march(1, "09:00:00"), march(7, "09:00:00"), true, true},
        {"open since the day before", march(2, "09:00:00"), {}, true, true},
        {"open since five minutes", march(4, "14:55:00"), {}, false, true},
        {"open since a moment less", march(4, "14:55:01"), {}, false, false},
        {"open late, the rest of its day is short", march(3, "23:56:00"), {}, false, true},
        {"end before start", march(3, "10:00:00"), march(3, "09:00:00"), false, false},
        {"ends in the future", march(4, "14:54:00"), march(5, "09:00:00"), false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::vector records{activity("A", row.start, row.end)};
        EXPECT_EQ(namesOn(march(3, "12:00:00"), records).size(), row.isOn3rd ? 1U : 0U);
        EXPECT_EQ(namesOn(march(4, "00:00:00"), records).size(), row.isOn4th ? 1U : 0U);
        EXPECT_THAT(namesOn(march(5, "00:00:00"), records), IsEmpty());
    }
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(RecordsForDateTest, TellsWhatBeginsInTheFutureAndLeavesTheLoginWindowOut) {
    auto nameless = activity("", march(4, "15:00:01"), {});
    nameless.appName.reset();
    auto locked = activity("Lock", march(4, "09:00:00"), march(4, "10:00:00"));
    locked.bundleId = "com.apple.loginwindow";
    const std::vector records{activity("B", march(4, "16:00:00"), march(4, "17:00:00")),
                              nameless,
                              activity("LoginWindow", march(4, "16:00:00"), march(4, "17:00:00")),
                              activity("loginwindow", march(4, "09:00:00"), march(4, "10:00:00")),
                              locked,
                              activity("A", march(4, "09:00:00"), march(4, "10:00:00"))};
    EXPECT_THAT(namesOn(now, records), ElementsAre("A"));
    EXPECT_THAT(console.lines(),
                ElementsAre("ContentView: 发现未来日期的记录 - B 开始时间: 2026-03-04 16:00:00 +0000",
                            "ContentView: 发现未来日期的记录 - 未知应用 开始时间: 2026-03-04 15:00:01 +0000"));
    console.clear();
    EXPECT_THAT(namesOn(march(5, "00:00:00"), records), IsEmpty());
    EXPECT_THAT(console.lines(), IsEmpty()) << "a date in the future looks at no record";
}

TEST_F(RecordsForDateTest, DaysOf23And25HoursAndWithoutMidnightAreWhole) {
    struct Row {
        const char* zone;
        const char* noon;
        const char* first;  ///< instant of the day
        const char* last;   ///< before its last second
    };
    const Row rows[] = {
        {"America/New_York", "2026-03-08T16:00:00Z", "2026-03-08T05:00:00Z", "2026-03-09T03:59:58Z"},
        {"America/New_York", "2025-11-02T17:00:00Z", "2025-11-02T04:00:00Z", "2025-11-03T04:59:58Z"},
        {"America/Asuncion", "2023-10-01T15:00:00Z", "2023-10-01T04:00:00Z", "2023-10-02T02:59:58Z"},
    };
    now = march(20, "00:00:00");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.noon);
        calendar = mondayFirst(row.zone);
        const Date first = at(row.first);
        const Date last = at(row.last);
        EXPECT_THAT(
            namesOn(at(row.noon), {activity("before", first - 1h, first), activity("first", first - 1h, first + 1s),
                                   activity("last", last, last + 1h), activity("after", last + 1s, last + 1h)}),
            ElementsAre("first", "last"));
    }
}

/// Day by day, each time over all records.
std::vector<DayRecords> oneByOne(const std::vector<TimelineRecordSnapshot>& records, const std::vector<Date>& dates,
                                 Date now, Seconds minimumLength, const Calendar& calendar) {
    std::vector<DayRecords> found;
    for (const Date date : dates) {
        DayRecords& kept = found.emplace_back();
        const auto day = timelineDay(date, calendar);
        for (const auto& record : records) {
            const Date end = std::min(record.endTime.value_or(day.end), now);
            if (date <= now && !record.isLoginWindow() && record.startTime <= now && record.startTime < day.end &&
                end > day.start && end - record.startTime >= minimumLength)
                kept.push_back(&record);
        }
    }
    return found;
}

TEST_F(RecordsForDateTest, OnePassFindsWhatAPassForEachDayFinds) {
    std::mt19937 random(7);
    calendar = mondayFirst("America/New_York");
    const auto pick = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
    for (int round = 0; round < 200; ++round) {
        std::vector<TimelineRecordSnapshot> records;
        for (int i = pick(0, 40); i > 0; --i) {
            const Date start = march(5, "00:00:00") + pick(0, 9 * 96) * 15min - pick(0, 1) * 1s;
            auto end = std::optional(start + pick(-1, 30) * pick(1, 8) * 1min);
            if (pick(0, 9) == 0) *end += pick(1, 5) * 24h;
            if (pick(0, 9) == 0) end.reset();
            records.push_back(activity(pick(0, 9) == 0 ? "LoginWindow" : "A", start, end));
        }
        std::vector<Date> dates;
        for (Date date = calendar.startOfDay(march(6, "12:00:00")); dates.size() < 7; date = calendar.day(date).end)
            dates.push_back(date);
        const Date today = march(5, "00:00:00") + pick(0, 9 * 48) * 30min;
        for (const Seconds least : {overviewMinimumLength, Seconds{0}}) {
            ASSERT_EQ(recordsForDates(records, dates, today, least, console, calendar),
                      oneByOne(records, dates, today, least, calendar));
        }
    }
}

}  // namespace
}  // namespace quorvane
