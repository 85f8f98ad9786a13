#include "billing/BillingReportRange.h"

#include "support/Builders.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

constexpr auto week = BillingReportRangeKind::week;
constexpr auto month = BillingReportRangeKind::month;
constexpr auto quarter = BillingReportRangeKind::quarter;
constexpr auto custom = BillingReportRangeKind::custom;

TEST(BillingReportRangeTest, OpenRangesRunFromTheirCalendarsStartToThisInstant) {
    struct Row {
        BillingReportRangeKind kind;
        const char* locale;
        const char* zone;
        const char* now;
        const char* start;
    };
    const Row rows[] = {
        {week, "en_US", "UTC", "2026-03-04T15:00:00Z", "2026-03-01T00:00:00Z"},
        {week, "de_DE", "UTC", "2026-03-04T15:00:00Z", "2026-03-02T00:00:00Z"},
        {week, "en_US", "UTC", "2026-03-01T00:00:00Z", "2026-03-01T00:00:00Z"},
        {week, "de_DE", "UTC", "2026-03-01T23:59:59.5Z", "2026-02-23T00:00:00Z"},
        {week, "en_US", "America/New_York", "2026-03-08T12:00:00-04:00", "2026-03-08T05:00:00Z"},
        {week, "de_DE", "America/New_York", "2026-03-08T12:00:00-04:00", "2026-03-02T05:00:00Z"},
        {week, "de_DE", "Australia/Lord_Howe", "2026-04-05T12:00:00+10:30", "2026-03-29T13:00:00Z"},
        {month, "en_US", "America/New_York", "2026-03-31T23:00:00-04:00", "2026-03-01T05:00:00Z"},
        {month, "en_US", "America/New_York", "2026-11-01T01:30:00-05:00", "2026-11-01T04:00:00Z"},
        {month, "de_DE", "Australia/Lord_Howe", "2026-10-04T12:00:00+11:00", "2026-09-30T13:30:00Z"},
        {month, "de_DE", "Australia/Lord_Howe", "2026-04-30T12:00:00+10:30", "2026-03-31T13:00:00Z"},
        {quarter, "en_US", "America/New_York", "2026-03-20T12:00:00-04:00", "2025-12-20T16:00:00Z"},
        {quarter, "de_DE", "Australia/Lord_Howe", "2026-04-05T12:00:00+10:30", "2026-01-05T01:30:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(rawValue(row.kind)) + " " + row.locale + " " + row.now);
        const Calendar calendar(row.locale, row.zone);
        const BillingReportRange range{.kind = row.kind};
        EXPECT_EQ(iso8601Seconds(rangeStart(range, at(row.now), calendar)), row.start);
        EXPECT_EQ(rangeEnd(range, at(row.now), calendar), at(row.now));
        EXPECT_TRUE(isEndInside(range));
    }
}

TEST(BillingReportRangeTest, CustomRangesAreWholeDaysWhateverTheClocksDo) {
    struct Row {
        const char* name;
        const char* zone;
        const char* first;
        const char* last;
        const char* start;
        const char* end;
    };
    const Row rows[] = {
        {"one day", "UTC", "2026-03-04T15:00:00Z", "2026-03-04T09:00:00Z", "2026-03-04T00:00:00Z",
         "2026-03-05T00:00:00Z"},
        {"a leap month", "UTC", "2024-02-01T00:00:00Z", "2024-02-29T23:59:59.5Z", "2024-02-01T00:00:00Z",
         "2024-03-01T00:00:00Z"},
        {"23 hours", "America/New_York", "2026-03-08T12:00:00-04:00", "2026-03-08T12:00:00-04:00",
         "2026-03-08T05:00:00Z", "2026-03-09T04:00:00Z"},
        {"25 hours", "America/New_York", "2026-11-01T12:00:00-05:00", "2026-11-01T01:30:00-04:00",
         "2026-11-01T04:00:00Z", "2026-11-02T05:00:00Z"},
        {"23.5 hours", "Australia/Lord_Howe", "2026-10-04T12:00:00+11:00", "2026-10-04T12:00:00+11:00",
         "2026-10-03T13:30:00Z", "2026-10-04T13:00:00Z"},
        {"24.5 hours", "Australia/Lord_Howe", "2026-04-05T12:00:00+10:30", "2026-04-05T12:00:00+10:30",
         "2026-04-04T13:00:00Z", "2026-04-05T13:30:00Z"},
        {"before a day without midnight", "America/Sao_Paulo", "2018-11-03T12:00:00-03:00", "2018-11-03T12:00:00-03:00",
         "2018-11-03T03:00:00Z", "2018-11-04T03:00:00Z"},
        {"without midnight", "America/Sao_Paulo", "2018-11-04T12:00:00-02:00", "2018-11-04T12:00:00-02:00",
         "2018-11-04T03:00:00Z", "2018-11-05T02:00:00Z"},
        {"a Friday without midnight", "Africa/Cairo", "2026-04-24T12:00:00+03:00", "2026-04-24T12:00:00+03:00",
         "2026-04-23T22:00:00Z", "2026-04-24T21:00:00Z"},
        {"swapped", "UTC", "2026-03-05T12:00:00Z", "2026-03-02T12:00:00Z", "2026-03-05T00:00:00Z",
         "2026-03-03T00:00:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        const auto range = BillingReportRange::fromKind(custom, at(row.first), at(row.last));
        const Date now = at("2026-03-04T15:00:00Z");
        EXPECT_EQ(iso8601Seconds(rangeStart(range, now, calendar)), row.start);
        EXPECT_EQ(iso8601Microseconds(rangeEnd(range, now, calendar)), iso8601Microseconds(at(row.end)));
        EXPECT_FALSE(isEndInside(range));
    }
}

TEST(BillingReportRangeTest, DatesMatterToCustomRangesAlone) {
    const Date a = at("09:00:00");
    const Date b = at("10:00:00");
    for (const auto kind : {week, month, quarter}) {
        EXPECT_EQ(BillingReportRange::fromKind(kind, a, b), BillingReportRange{.kind = kind});
        EXPECT_NE(BillingReportRange::fromKind(kind, a, b), BillingReportRange::fromKind(custom, a, b));
    }
}

TEST(BillingReportRangeTest, LabelsHaveTheWordsOfTheLanguageAndTheDatesOfTheLocale) {
    struct Row {
        BillingReportRangeKind kind;
        const char* locale;
        const char* language;
        const char* zone;
        const char* expected;
    };
    const Row rows[] = {
        {week, "en_US.UTF-8", "en", "UTC", "This week"},
        {month, "zh_CN.UTF-8", "zh", "UTC", "本月"},
        {quarter, "en_US.UTF-8", "en", "UTC", "Last 90 days"},
        {quarter, "zh_CN.UTF-8", "zh", "UTC", "最近 90 天"},
        {custom, "en_US.UTF-8", "en", "UTC", "Mar 4, 2026 — Apr 5, 2026"},
        {custom, "en_US.UTF-8", "en", "America/New_York", "Mar 3, 2026 — Apr 5, 2026"},
        {custom, "zh_CN.UTF-8", "zh", "UTC", "2026年3月4日 — 2026年4月5日"},
        {custom, "de_DE.UTF-8", "zh", "UTC", "04.03.2026 — 05.04.2026"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expected);
        setenv("LC_ALL", row.locale, 1);
        setenv("TZ", row.zone, 1);
        const auto range =
            BillingReportRange::fromKind(row.kind, at("2026-03-04T03:00:00Z"), at("2026-04-05T12:00:00Z"));
        EXPECT_EQ(rangeLabel(range, Localization(row.language)), row.expected);
    }
    setenv("LC_ALL", "en_US.UTF-8", 1);
    setenv("TZ", "UTC", 1);
    EXPECT_EQ(label(custom, Localization("en")), "Custom range");
    EXPECT_EQ(label(week, Localization("zh")), "本周");
}

}  // namespace
}  // namespace quorvane
