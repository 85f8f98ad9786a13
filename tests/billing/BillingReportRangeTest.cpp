#include "billing/BillingReportRange.h"

#include "support/Builders.h"
#include "support/TextTable.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

constexpr auto week = BillingReportRangeKind::week;
constexpr auto month = BillingReportRangeKind::month;
constexpr auto quarter = BillingReportRangeKind::quarter;
constexpr auto custom = BillingReportRangeKind::custom;

TEST(BillingReportRangeTest, OpenRangesRunFromTheirCalendarsStartToThisInstant) {
    for (const auto& row : textTable(QUORVANE_BILLING_DATA "/open-ranges.txt")) {
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[3]);
        const Date now = at(row[3]);
        const Calendar calendar(row[1], row[2]);
        const BillingReportRange range{.kind = fromRawValue<BillingReportRangeKind>(row[0]).value()};
        EXPECT_EQ(iso8601Seconds(rangeStart(range, now, calendar)), row[4]);
        EXPECT_EQ(rangeEnd(range, now, calendar), now);
        EXPECT_TRUE(isEndInside(range));
    }
}

TEST(BillingReportRangeTest, CustomRangesAreWholeDaysWhateverTheClocksDo) {
    for (const auto& row : textTable(QUORVANE_BILLING_DATA "/custom-ranges.txt")) {
        SCOPED_TRACE(row[0]);
        const Calendar calendar("en_US", row[1]);
        const auto range = BillingReportRange::fromKind(custom, at(row[2]), at(row[3]));
        const Date now = at("2026-03-04T15:00:00Z");
        EXPECT_EQ(iso8601Seconds(rangeStart(range, now, calendar)), row[4]);
        EXPECT_EQ(iso8601Microseconds(rangeEnd(range, now, calendar)), iso8601Microseconds(at(row[5])));
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
    for (const auto& row : textTable(QUORVANE_BILLING_DATA "/range-labels.txt")) {
        setenv("LC_ALL", row[1].c_str(), 1);
        setenv("TZ", row[3].c_str(), 1);
        const auto range = BillingReportRange::fromKind(fromRawValue<BillingReportRangeKind>(row[0]).value(),
                                                        at("2026-03-04T03:00:00Z"), at("2026-04-05T12:00:00Z"));
        EXPECT_EQ(rangeLabel(range, Localization(row[2])), row[4]);
    }
    setenv("LC_ALL", "en_US.UTF-8", 1);
    setenv("TZ", "UTC", 1);
    EXPECT_EQ(label(custom, Localization("en")), "Custom range");
    EXPECT_EQ(label(week, Localization("zh")), "本周");
}

}  // namespace
}  // namespace quorvane
