#include "base/Calendar.h"

#include <cstdlib>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace quorvane {
namespace {

Date at(const char* text) { return parseIso8601(text).value(); }

/// An interval as two instants that are easy to read in a failure.
std::string text(DateInterval interval) { return iso8601Seconds(interval.start) + "/" + iso8601Seconds(interval.end); }

TEST(CalendarTest, DaysRunFromTheirFirstInstantToThatOfTheNext) {
    struct Row {
        const char* name;
        const char* zone;
        const char* within;
        const char* expected;
        double hours;
    };
    const Row rows[] = {
        {"plain", "UTC", "2026-03-04T15:00:00Z", "2026-03-04T00:00:00Z/2026-03-05T00:00:00Z", 24},
        {"its first instant", "UTC", "2026-03-04T00:00:00Z", "2026-03-04T00:00:00Z/2026-03-05T00:00:00Z", 24},
        {"its last instant", "UTC", "2026-03-04T23:59:59.999999Z", "2026-03-04T00:00:00Z/2026-03-05T00:00:00Z", 24},
        {"New York loses an hour", "America/New_York", "2026-03-08T12:00:00-04:00",
         "2026-03-08T05:00:00Z/2026-03-09T04:00:00Z", 23},
        {"New York, before the change", "America/New_York", "2026-03-08T00:30:00-05:00",
         "2026-03-08T05:00:00Z/2026-03-09T04:00:00Z", 23},
        {"New York gains an hour", "America/New_York", "2026-11-01T01:30:00-05:00",
         "2026-11-01T04:00:00Z/2026-11-02T05:00:00Z", 25},
        {"the day after it", "America/New_York", "2026-11-02T00:00:00-05:00",
         "2026-11-02T05:00:00Z/2026-11-03T05:00:00Z", 24},
        {"Lord Howe loses half an hour", "Australia/Lord_Howe", "2026-10-04T12:00:00+11:00",
         "2026-10-03T13:30:00Z/2026-10-04T13:00:00Z", 23.5},
        {"Lord Howe gains half an hour", "Australia/Lord_Howe", "2026-04-05T12:00:00+10:30",
         "2026-04-04T13:00:00Z/2026-04-05T13:30:00Z", 24.5},
        {"no midnight in São Paulo", "America/Sao_Paulo", "2018-11-04T12:00:00-02:00",
         "2018-11-04T03:00:00Z/2018-11-05T02:00:00Z", 23},
        {"the day before it", "America/Sao_Paulo", "2018-11-03T23:59:59-03:00",
         "2018-11-03T03:00:00Z/2018-11-04T03:00:00Z", 24},
        {"São Paulo goes back at midnight", "America/Sao_Paulo", "2018-02-17T23:30:00-03:00",
         "2018-02-17T02:00:00Z/2018-02-18T03:00:00Z", 25},
        {"no midnight in Beirut", "Asia/Beirut", "2022-03-27T12:00:00+03:00",
         "2022-03-26T22:00:00Z/2022-03-27T21:00:00Z", 23},
        {"two midnights in Havana", "America/Havana", "2026-11-01T00:30:00-05:00",
         "2026-11-01T04:00:00Z/2026-11-02T05:00:00Z", 25},
        {"before the day that Apia skipped", "Pacific/Apia", "2011-12-29T12:00:00-10:00",
         "2011-12-29T10:00:00Z/2011-12-30T10:00:00Z", 24},
        {"after the day that Apia skipped", "Pacific/Apia", "2011-12-31T12:00:00+14:00",
         "2011-12-30T10:00:00Z/2011-12-31T10:00:00Z", 24},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        const auto day = calendar.day(at(row.within));
        EXPECT_EQ(text(day), row.expected);
        EXPECT_EQ((day.end - day.start) / 1h, row.hours);
        EXPECT_EQ(calendar.startOfDay(at(row.within)), day.start);
        EXPECT_TRUE(calendar.isSameDay(day.start, at(row.within)));
        EXPECT_FALSE(calendar.isSameDay(day.end, at(row.within)));
    }
}

TEST(CalendarTest, WeeksBeginAsTheCountryHasIt) {
    struct Row {
        const char* locale;
        const char* zone;
        int firstWeekday;
        const char* within;
        const char* expected;
    };
    const Row rows[] = {
        {"en_US", "UTC", 1, "2026-03-04T15:00:00Z", "2026-03-01T00:00:00Z/2026-03-08T00:00:00Z"},
        {"en_US.UTF-8", "UTC", 1, "2026-03-01T00:00:00Z", "2026-03-01T00:00:00Z/2026-03-08T00:00:00Z"},
        {"de_DE", "UTC", 2, "2026-03-04T15:00:00Z", "2026-03-02T00:00:00Z/2026-03-09T00:00:00Z"},
        {"de-DE", "UTC", 2, "2026-03-01T23:59:59Z", "2026-02-23T00:00:00Z/2026-03-02T00:00:00Z"},
        {"ar_EG", "UTC", 7, "2026-03-04T15:00:00Z", "2026-02-28T00:00:00Z/2026-03-07T00:00:00Z"},
        {"de_DE", "America/New_York", 2, "2026-03-08T23:00:00-04:00", "2026-03-02T05:00:00Z/2026-03-09T04:00:00Z"},
        {"en_US", "America/Sao_Paulo", 1, "2018-11-07T12:00:00-02:00", "2018-11-04T03:00:00Z/2018-11-11T02:00:00Z"},
        {"de_DE", "Pacific/Apia", 2, "2011-12-31T12:00:00+14:00", "2011-12-26T10:00:00Z/2012-01-01T10:00:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(fmt::format("{} {} {}", row.locale, row.zone, row.within));
        const Calendar calendar(row.locale, row.zone);
        EXPECT_EQ(calendar.firstWeekday(), row.firstWeekday);
        EXPECT_EQ(text(calendar.week(at(row.within))), row.expected);
    }
}

TEST(CalendarTest, MonthsAreTheCalendarsOwn) {
    struct Row {
        const char* locale;
        const char* zone;
        const char* within;
        const char* expected;
    };
    const Row rows[] = {
        {"en_US", "UTC", "2026-02-28T23:59:59.5Z", "2026-02-01T00:00:00Z/2026-03-01T00:00:00Z"},
        {"en_US", "UTC", "2024-02-29T12:00:00Z", "2024-02-01T00:00:00Z/2024-03-01T00:00:00Z"},
        {"en_US", "UTC", "2026-12-31T12:00:00Z", "2026-12-01T00:00:00Z/2027-01-01T00:00:00Z"},
        {"en_US", "America/New_York", "2026-03-31T23:00:00-04:00", "2026-03-01T05:00:00Z/2026-04-01T04:00:00Z"},
        {"en_US", "Pacific/Apia", "2011-12-31T12:00:00+14:00", "2011-12-01T10:00:00Z/2011-12-31T10:00:00Z"},
        {"th_TH", "Asia/Bangkok", "2026-03-04T15:00:00+07:00", "2026-02-28T17:00:00Z/2026-03-31T17:00:00Z"},
        {"fa_IR", "Asia/Tehran", "2026-03-21T12:00:00+03:30", "2026-03-20T20:30:00Z/2026-04-20T20:30:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(fmt::format("{} {} {}", row.locale, row.zone, row.within));
        EXPECT_EQ(text(Calendar(row.locale, row.zone).month(at(row.within))), row.expected);
    }
}

TEST(CalendarTest, FieldsAreThoseOfTheCalendarAndCivilDatesGregorian) {
    const Date date = at("2026-03-04T23:30:15.75Z");
    const Calendar berlin("de_DE", "Europe/Berlin");
    EXPECT_EQ(berlin.components(date), (DateComponents{2026, 3, 5, 0, 30, 15, 5}));
    EXPECT_EQ(berlin.civilDate(date), (CivilDate{2026, 3, 5}));
    const Calendar bangkok("th_TH", "Asia/Bangkok");
    EXPECT_EQ(bangkok.components(date), (DateComponents{2569, 3, 5, 6, 30, 15, 5}));
    EXPECT_EQ(bangkok.civilDate(date), (CivilDate{2026, 3, 5}));
    EXPECT_EQ(bangkok.date({2026, 3, 5}, 6, 30, 15.75), date);
    const Calendar monday = Calendar::mondayFirst(bangkok);
    EXPECT_EQ(monday.components(date).year, 2026);
    EXPECT_EQ(monday.firstWeekday(), 2);
    EXPECT_EQ(monday.zoneName(), "Asia/Bangkok");
}

TEST(CalendarTest, ADateIsMadeFromWhatTheClockShowed) {
    struct Row {
        const char* name;
        const char* zone;
        CivilDate day;
        int hour;
        int minute;
        const char* expected;
    };
    const Row rows[] = {
        {"in a gap: what follows it", "America/New_York", {2026, 3, 8}, 2, 30, "2026-03-08T07:00:00Z"},
        {"twice: the first", "America/New_York", {2026, 11, 1}, 1, 30, "2026-11-01T05:30:00Z"},
        {"midnight in a gap", "America/Sao_Paulo", {2018, 11, 4}, 0, 0, "2018-11-04T03:00:00Z"},
        {"a day that is missing", "Pacific/Apia", {2011, 12, 30}, 12, 0, "2011-12-30T10:00:00Z"},
        {"long ago, still Gregorian", "UTC", {1400, 3, 1}, 0, 0, "1400-03-01T00:00:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        EXPECT_EQ(iso8601Seconds(calendar.date(row.day, row.hour, row.minute)), row.expected);
    }
}

TEST(CalendarTest, AddingKeepsTheTimeOfDay) {
    struct Row {
        const char* name;
        const char* zone;
        int days;
        int months;
        const char* from;
        const char* expected;
    };
    const Row rows[] = {
        {"over a lost hour", "America/New_York", 1, 0, "2026-03-07T12:00:00-05:00", "2026-03-08T16:00:00.000000Z"},
        {"back over it", "America/New_York", -1, 0, "2026-03-08T12:00:00-04:00", "2026-03-07T17:00:00.000000Z"},
        {"into the gap", "America/New_York", 1, 0, "2026-03-07T02:30:00-05:00", "2026-03-08T07:00:00.000000Z"},
        {"microseconds", "America/New_York", 7, 0, "2026-03-05T12:00:00.123456-05:00", "2026-03-12T16:00:00.123456Z"},
        {"to a shorter month", "UTC", 0, 1, "2026-01-31T12:00:00Z", "2026-02-28T12:00:00.000000Z"},
        {"back a year", "UTC", 0, -12, "2024-02-29T12:00:00.000001Z", "2023-02-28T12:00:00.000001Z"},
        {"months over a lost hour", "Europe/Berlin", 0, 1, "2026-03-01T12:00:00.654321+01:00",
         "2026-04-01T10:00:00.654321Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        const Date moved = calendar.addingMonths(row.months, calendar.addingDays(row.days, at(row.from)));
        EXPECT_EQ(iso8601Microseconds(moved), row.expected);
    }
}

TEST(CalendarTest, WhatIsUnknownFallsBack) {
    const Date date = at("2026-03-04T15:00:00Z");
    for (const char* zone : {"Mars/Olympus", "", "🕰"}) {
        SCOPED_TRACE(zone);
        const Calendar calendar("en_US", zone);
        EXPECT_EQ(calendar.components(date).hour, 15);
        EXPECT_EQ(text(calendar.day(date)), "2026-03-04T00:00:00Z/2026-03-05T00:00:00Z");
    }
    for (const std::string& locale : {std::string("tlh_QX"), std::string(), std::string("not a locale"),
                                      std::string(5000, 'x'), std::string("en_US@calendar=nonsense")}) {
        SCOPED_TRACE(locale.substr(0, 40));
        const Calendar calendar(locale, "Europe/Berlin");
        EXPECT_EQ(calendar.components(date), (DateComponents{2026, 3, 4, 16, 0, 0, 4}));
        EXPECT_EQ(calendar.zoneName(), "Europe/Berlin");
    }
}

TEST(CalendarTest, TheUsersComesFromTheEnvironmentAsItIsNow) {
    ::unsetenv("LC_ALL");
    ::setenv("LC_TIME", "de_DE.UTF-8", 1);
    ::setenv("LANG", "en_US.UTF-8", 1);
    ::setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(Calendar::current().firstWeekday(), 2);
    EXPECT_EQ(Calendar::current().zoneName(), "Asia/Kolkata");
    ::setenv("LC_ALL", "", 1);  // empty is as good as unset
    EXPECT_EQ(dateLocale(), "de_DE.UTF-8");
    ::setenv("LC_ALL", "en_US.UTF-8", 1);
    ::setenv("TZ", "UTC", 1);
    EXPECT_EQ(Calendar::current().firstWeekday(), 1);
    EXPECT_EQ(Calendar::current().components(at("2026-03-04T15:00:00Z")).hour, 15);
    ::unsetenv("LC_TIME");
}

TEST(CalendarTest, ACopyIsACalendarOfItsOwn) {
    Calendar copy("de_DE", "UTC");
    {
        const Calendar original("en_US", "Asia/Tokyo");
        copy = original;
        EXPECT_EQ(original.startOfDay(at("2026-03-04T15:00:00Z")), at("2026-03-04T15:00:00Z"));
    }
    EXPECT_EQ(copy.zoneName(), "Asia/Tokyo");
    EXPECT_EQ(copy.firstWeekday(), 1);
}

}  // namespace
}  // namespace quorvane
