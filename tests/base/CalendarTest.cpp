#include "base/Calendar.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <string>

namespace quorvane {
namespace {

Date at(const char* text) {
    return parseIso8601(text).value();
}

/// An interval as two instants that are easy to read in a failure.
std::string text(DateInterval interval) {
    return iso8601Seconds(interval.start) + "/" + iso8601Seconds(interval.end);
}

TEST(CalendarTest, DaysRunFromTheirFirstInstantToThatOfTheNext) {
    struct Row {
        const char* name;
        const char* zone;
        const char* within;
        const char* expected;
    };
    // All in the past: governments change the rules of the years to come.
    const Row rows[] = {
        {"plain", "UTC", "2026-03-04T23:59:59.999999Z", "2026-03-04T00:00:00Z/2026-03-05T00:00:00Z"},
        {"23 hours", "America/New_York", "2024-03-10T12:00:00-04:00", "2024-03-10T05:00:00Z/2024-03-11T04:00:00Z"},
        {"25 hours", "America/New_York", "2024-11-03T01:30:00-05:00", "2024-11-03T04:00:00Z/2024-11-04T05:00:00Z"},
        {"after it", "America/New_York", "2024-11-04T00:00:00-05:00", "2024-11-04T05:00:00Z/2024-11-05T05:00:00Z"},
        {"23.5 hours", "Australia/Lord_Howe", "2024-10-06T12:00:00+11:00", "2024-10-05T13:30:00Z/2024-10-06T13:00:00Z"},
        {"no midnight", "America/Sao_Paulo", "2018-11-04T12:00:00-02:00", "2018-11-04T03:00:00Z/2018-11-05T02:00:00Z"},
        {"before it", "America/Sao_Paulo", "2018-11-03T23:59:59-03:00", "2018-11-03T03:00:00Z/2018-11-04T03:00:00Z"},
        {"23:30 twice", "America/Sao_Paulo", "2018-02-17T23:30:00-03:00", "2018-02-17T02:00:00Z/2018-02-18T03:00:00Z"},
        {"two midnights", "America/Havana", "2024-11-03T00:30:00-05:00", "2024-11-03T04:00:00Z/2024-11-04T05:00:00Z"},
        {"before a lost day", "Pacific/Apia", "2011-12-29T12:00:00-10:00", "2011-12-29T10:00:00Z/2011-12-30T10:00:00Z"},
        {"after a lost day", "Pacific/Apia", "2011-12-31T12:00:00+14:00", "2011-12-30T10:00:00Z/2011-12-31T10:00:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        const auto day = calendar.day(at(row.within));
        EXPECT_EQ(text(day), row.expected);
        EXPECT_EQ(calendar.startOfDay(at(row.within)), day.start);
        EXPECT_TRUE(calendar.isSameDay(day.start, at(row.within)));
        EXPECT_FALSE(calendar.isSameDay(day.end, at(row.within)));
    }
}

TEST(CalendarTest, WeeksAndMonthsAreThoseOfTheCountry) {
    const auto week = &Calendar::week;
    const auto month = &Calendar::month;
    struct Row {
        DateInterval (Calendar::*unit)(Date) const;
        const char* locale;
        const char* zone;
        const char* within;
        const char* expected;
    };
    const Row rows[] = {
        {week, "en_US.UTF-8", "UTC", "2026-03-01T00:00:00Z", "2026-03-01T00:00:00Z/2026-03-08T00:00:00Z"},
        {week, "de-DE", "UTC", "2026-03-01T23:59:59Z", "2026-02-23T00:00:00Z/2026-03-02T00:00:00Z"},
        {week, "ar_EG", "UTC", "2026-03-04T15:00:00Z", "2026-02-28T00:00:00Z/2026-03-07T00:00:00Z"},
        {week, "de_DE", "America/New_York", "2026-03-08T23:00:00-04:00", "2026-03-02T05:00:00Z/2026-03-09T04:00:00Z"},
        {week, "de_DE", "Pacific/Apia", "2011-12-31T12:00:00+14:00", "2011-12-26T10:00:00Z/2012-01-01T10:00:00Z"},
        {month, "en_US", "UTC", "2024-02-29T12:00:00Z", "2024-02-01T00:00:00Z/2024-03-01T00:00:00Z"},
        {month, "en_US", "UTC", "2026-12-31T12:00:00Z", "2026-12-01T00:00:00Z/2027-01-01T00:00:00Z"},
        {month, "en_US", "America/New_York", "2026-03-31T23:00:00-04:00", "2026-03-01T05:00:00Z/2026-04-01T04:00:00Z"},
        {month, "fa_IR", "Asia/Tehran", "2026-03-21T12:00:00+03:30", "2026-03-20T20:30:00Z/2026-04-20T20:30:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expected);
        const Calendar calendar(row.locale, row.zone);
        EXPECT_EQ(text((calendar.*row.unit)(at(row.within))), row.expected);
    }
}

TEST(CalendarTest, FieldsAreThoseOfTheCalendarAndCivilDatesGregorian) {
    const Date date = at("2026-03-04T23:30:15.75Z");
    const Calendar bangkok("th_TH", "Asia/Bangkok");
    EXPECT_EQ(bangkok.components(date), (DateComponents{2569, 3, 5, 6, 30, 15, 5}));
    EXPECT_EQ(bangkok.civilDate(date), (CivilDate{2026, 3, 5}));
    EXPECT_EQ(bangkok.date({2026, 3, 5}, 6, 30, 15.75), date);
    const Calendar monday = Calendar::mondayFirst(bangkok);
    EXPECT_EQ(monday.components(date), (DateComponents{2026, 3, 5, 6, 30, 15, 5}));
    EXPECT_EQ(monday.firstWeekday(), 2);
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
        EXPECT_EQ(iso8601Seconds(Calendar("en_US", row.zone).date(row.day, row.hour, row.minute)), row.expected);
    }
}

TEST(CalendarTest, AddingKeepsTheTimeOfDay) {
    struct Row {
        const char* name;
        int days;
        int months;
        const char* from;
        const char* expected;
    };
    const Row rows[] = {
        {"back over a lost hour", -1, 0, "2026-03-08T12:00:00-04:00", "2026-03-07T17:00:00.000000Z"},
        {"into the gap", 1, 0, "2026-03-07T02:30:00-05:00", "2026-03-08T07:00:00.000000Z"},
        {"microseconds", 7, 0, "2026-03-05T12:00:00.123456-05:00", "2026-03-12T16:00:00.123456Z"},
        {"to a shorter month", 0, 1, "2026-01-31T12:00:00-05:00", "2026-02-28T17:00:00.000000Z"},
        {"back a year", 0, -12, "2024-02-29T12:00:00.000001-05:00", "2023-02-28T17:00:00.000001Z"},
    };
    const Calendar calendar("en_US", "America/New_York");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Date moved = calendar.addingMonths(row.months, calendar.addingDays(row.days, at(row.from)));
        EXPECT_EQ(iso8601Microseconds(moved), row.expected);
    }
}

TEST(CalendarTest, WhatIsUnknownFallsBack) {
    const Date date = at("2026-03-04T15:00:00Z");
    for (const char* zone : {"Mars/Olympus", "", "🕰"})
        EXPECT_EQ(Calendar("en_US", zone).components(date), (DateComponents{2026, 3, 4, 15, 0, 0, 4})) << zone;
    for (const std::string& locale : {std::string(), std::string("not a locale"), std::string(5000, 'x')})
        EXPECT_EQ(Calendar(locale, "Europe/Berlin").components(date), (DateComponents{2026, 3, 4, 16, 0, 0, 4}));
}

TEST(CalendarTest, TheUsersComesFromTheEnvironmentAsItIsNow) {
    ::setenv("LC_ALL", "", 1);  // empty is as good as unset
    ::setenv("LC_TIME", "de_DE.UTF-8", 1);
    ::setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(Calendar::current().firstWeekday(), 2);
    EXPECT_EQ(Calendar::current().civilDate(at("2026-03-04T18:30:00Z")), (CivilDate{2026, 3, 5}));
    ::setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_EQ(Calendar::current().firstWeekday(), 1);
    ::setenv("LC_ALL", "en_US.UTF-8", 1);
    ::setenv("TZ", "UTC", 1);
    EXPECT_EQ(Calendar::current().firstWeekday(), 1);
    EXPECT_EQ(Calendar::current().components(at("2026-03-04T15:00:00Z")).hour, 15);
    ::unsetenv("LC_TIME");
}

}  // namespace
}  // namespace quorvane
