#include "store/AppSettings.h"

#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(AppSettingsTest, WorkDaysAreReadNumberByNumber) {
    const std::pair<const char*, std::vector<std::int64_t>> rows[] = {
        {"1,2,3,4,5", {1, 2, 3, 4, 5}},
        {" 1, x,3\t,,5,1,", {1, 3, 5, 1}},
        {"+1,-2,- 3,+-4,--5,+", {1, -2}},
        {"1.0,2a,0x3,007,１,1\n", {7}},
        {"9223372036854775807,9223372036854775808,-9223372036854775808", {INT64_MAX, INT64_MIN}}};
    AppSettings settings;
    for (const auto& [stored, expected] : rows) {
        settings.workDays = stored;
        EXPECT_EQ(settings.workDayList(), expected) << stored;
    }
    settings.setWorkDayList({3, -1, 3});
    EXPECT_EQ(settings.workDays(), "3,-1,3");
    settings.setWorkDayList({});
    EXPECT_EQ(settings.workDays(), "");
}

TEST(AppSettingsTest, WorkHoursHoldOnDaysCountedFromTheFirstOfTheWeek) {
    using Days = std::vector<const char*>;
    // Weeks begin on Sunday in America, and in Germany on Monday.
    const std::tuple<const char*, const char*, Days, Days> rows[] = {
        {"one to five", "1,2,3,4,5", {"Mo", "Tu", "We", "Th", "Fr"}, {"Tu", "We", "Th", "Fr", "Sa"}},
        {"zero", "0", {"Su"}, {"Mo"}},
        {"six", "6", {"Sa"}, {"Su"}},
        {"seven is no day", "7,-1", {}, {}},
        {"none", "", {}, {}}};
    const char* const names[] = {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
    for (const auto& [name, stored, inAmerica, inGermany] : rows) {
        SCOPED_TRACE(name);
        AppSettings settings;
        settings.onlyTrackWorkHours = true;
        settings.workDays = stored;
        const auto within = [&](const char* locale) {
            const Calendar calendar(locale, "Europe/Berlin");
            Days days;
            for (int i = 0; i < 7; ++i)
                if (settings.isWithinWorkHours(calendar.date({2026, 3, 1 + i}, 12), calendar)) days.push_back(names[i]);
            return days;
        };
        EXPECT_EQ(within("en_US"), inAmerica);
        EXPECT_EQ(within("de_DE"), inGermany);
        settings.onlyTrackWorkHours = false;
        EXPECT_THAT(within("en_US"), SizeIs(7));
    }
}

TEST(AppSettingsTest, BothEndsOfTheHoursBelongToThemToTheMinuteOfTheWallClock) {
    const struct {
        std::int64_t startHour, startMinute, endHour, endMinute;
        const char* time;
        bool expected;
        const char* zone = "UTC";
    } rows[] = {{9, 0, 18, 0, "2026-03-02T08:59:59.9Z", false},
                {9, 0, 18, 0, "2026-03-02T09:00:00Z", true},
                {9, 0, 18, 0, "2026-03-02T18:00:59.9Z", true},
                {9, 0, 18, 0, "2026-03-02T18:01:00Z", false},
                {9, 0, 9, 0, "2026-03-02T09:01:00Z", false},
                {22, 0, 6, 0, "2026-03-02T23:00:00Z", false},
                {0, 0, 24, 0, "2026-03-02T23:59:59Z", true},
                {8, 90, 18, 0, "2026-03-02T09:30:00Z", true},
                {8, 90, 18, 0, "2026-03-02T09:29:00Z", false},
                {INT64_MIN, 0, INT64_MAX, INT64_MAX, "2026-03-02T03:00:00Z", true},
                {INT64_MAX, 0, INT64_MIN, 0, "2026-03-02T03:00:00Z", false},
                // Of days of 23 and 25 hours: 01:59, and then 03:00; in autumn two o'clock comes twice.
                {2, 0, 3, 0, "2026-03-29T00:59:00Z", false, "Europe/Berlin"},
                {2, 0, 3, 0, "2026-03-29T01:00:00Z", true, "Europe/Berlin"},
                {2, 0, 3, 0, "2026-10-25T00:00:00Z", true, "Europe/Berlin"},
                {2, 0, 3, 0, "2026-10-25T02:00:00Z", true, "Europe/Berlin"},
                {2, 0, 3, 0, "2026-10-25T02:01:00Z", false, "Europe/Berlin"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.startHour << ":" << row.startMinute << " to " << row.endHour << ":"
                                        << row.endMinute << " at " << row.time);
        AppSettings settings;
        settings.onlyTrackWorkHours = true;
        settings.workStartHour = row.startHour;
        settings.workStartMinute = row.startMinute;
        settings.workEndHour = row.endHour;
        settings.workEndMinute = row.endMinute;
        settings.setWorkDayList({0, 1, 2, 3, 4, 5, 6});
        EXPECT_EQ(settings.isWithinWorkHours(at(row.time), Calendar("en_US", row.zone)), row.expected);
    }
}

}  // namespace
}  // namespace quorvane
