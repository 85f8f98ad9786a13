#include "timeline/WeekTimeline.h"

#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TextTable.h"
#include "timeline/AppColorPalette.h"
#include "timeline/OverviewBuilders.h"

using testing::DoubleNear;

namespace quorvane {
namespace {

using Records = std::vector<TimelineRecordSnapshot>;

WeekTimelineColumn columnOf(const Records& records, Date now, Date date, const Calendar& calendar = mondayFirst(),
                            double width = 120) {
    RecordingConsole console;
    return WeekTimeline::column(date, recordsForDate(records, date, now, console, calendar),
                                {.records = records, .now = now, .columnWidth = width}, calendar);
}

TEST(WeekTimelineTest, WeeksBeginOnMondayWhateverTheLocale) {
    for (const char* date : {"2026-03-02T00:00:00Z", "2026-03-05T12:00:00Z", "2026-03-08T23:59:59Z"})
        EXPECT_EQ(WeekTimeline::weekStart(at(date), mondayFirst()), march(2, "00:00:00")) << date;
    const auto days = WeekTimeline::days(march(10, "12:00:00"), mondayFirst("America/New_York"));
    EXPECT_EQ(days[6], at("2026-03-15T04:00:00Z"));
    const auto change = WeekTimeline::days(march(5, "12:00:00"), mondayFirst("America/New_York"));
    EXPECT_EQ(change[6], at("2026-03-08T05:00:00Z"));
    const auto gap = WeekTimeline::days(at("2018-11-01T12:00:00Z"), mondayFirst("America/Sao_Paulo"));
    EXPECT_EQ(gap[6], at("2018-11-04T03:00:00Z")) << "a Sunday that begins at one";
}

TEST(WeekTimelineTest, ColumnsShareTheRoomWithinBounds) {
    EXPECT_EQ(WeekTimeline::columnWidth(300), 100);
    EXPECT_EQ(WeekTimeline::columnWidth(50 + 7 * 133), 133);
    EXPECT_EQ(WeekTimeline::columnWidth(4000), 200);
    EXPECT_EQ(WeekTimeline::hourLabel(9), "09:00");
}

TEST(WeekTimelineTest, CutsItemsToTheVisiblePartOfTheDay) {
    struct Row {
        const char* name;
        Date start;
        std::optional<Date> end;
        Date now;
        std::optional<std::pair<double, double>> expected;  ///< hours
    };
    const double lastSecond = 24 - 1 / 3600.0;
    const Date later = march(9, "00:00:00");
    const Row rows[] = {
        {"within", march(3, "09:00:00"), march(3, "10:30:00"), later, {{9, 10.5}}},
        {"over midnight", march(3, "23:00:00"), march(4, "02:00:00"), later, {{23, lastSecond}}},
        {"from the day before", march(2, "23:00:00"), march(3, "02:00:00"), later, {{0, 2}}},
        {"four minutes of it here", march(2, "20:00:00"), march(3, "00:04:00"), later, {}},
        {"five minutes of it here", march(2, "20:00:00"), march(3, "00:05:00"), later, {{0, 5 / 60.0}}},
        {"open on a day that has passed", march(3, "20:00:00"), {}, later, {{20, lastSecond}}},
        {"open today", march(3, "09:00:00"), {}, march(3, "15:00:00"), {{9, 15}}},
        {"ends in the future", march(3, "09:00:00"), march(3, "20:00:00"), march(3, "15:00:00"), {{9, 15}}},
        {"the day has just begun", march(2, "09:00:00"), {}, march(3, "00:00:00"), {}},
        {"a coming day", march(2, "09:00:00"), march(5, "09:00:00"), march(2, "20:00:00"), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto bars = columnOf({activity("A", row.start, row.end)}, row.now, march(3, "00:00:00")).activities;
        ASSERT_THAT(bars, SizeIs(row.expected ? 1 : 0));
        if (!row.expected) continue;
        EXPECT_NEAR(bars[0].geometry.startHour, row.expected->first, 1e-9);
        EXPECT_NEAR(bars[0].geometry.endHour, row.expected->second, 1e-9);
    }
}

TEST(WeekTimelineTest, HoursAreThoseThatPassedOnDaysOf23And25) {
    const auto calendar = mondayFirst("America/New_York");
    const Date now = march(20, "00:00:00");
    const Date spring = at("2026-03-08T05:00:00Z");
    const auto shortDay = columnOf({activity("A", spring + 1h, {})}, now, spring, calendar).activities;
    EXPECT_THAT(shortDay[0].geometry.endHour, DoubleNear(23 - 1 / 3600.0, 1e-9));
    const Date autumn = at("2025-11-02T04:00:00Z");
    const auto longDay = columnOf({activity("A", autumn + 1h, {})}, now, autumn, calendar).activities;
    EXPECT_THAT(longDay[0].geometry.endHour, DoubleNear(25 - 1 / 3600.0, 1e-9));
}

/// lane/lanes, centre and size: comparable and easy to read in a failure.
template <class Bar>
std::vector<std::string> geometries(const std::vector<Bar>& bars) {
    return mapped(bars, [](const Bar& bar) {
        const auto& [start, end, lane, frame] = bar.geometry;
        return fmt::format("{}/{} at {:g},{:g} size {:g}x{:g}", lane.index, lane.count, frame.x, frame.y, frame.width,
                           frame.height);
    });
}

TEST(WeekTimelineTest, WhatOverlapsSharesItsHalfAndBarsAreFourHighAtLeast) {
    const Records records{activity("D", march(3, "12:00:00"), march(3, "14:00:00")),
                          activity("C", march(3, "11:00:00"), march(3, "13:00:00")),
                          activity("B", march(3, "09:30:00"), march(3, "09:36:00")),
                          activity("A", march(3, "09:00:00"), march(3, "09:30:00"))};
    const Date now = march(9, "00:00:00");
    const std::vector lone{given("Web", march(3, "09:00:00"), march(3, "09:01:00"))};
    const std::vector pair{given("Web", march(3, "22:00:00"), march(4, "01:00:00")),
                           given("Sea", march(3, "23:00:00"), march(3, "23:30:00")),
                           given("App", march(2, "22:00:00"), march(3, "01:00:00"))};
    RecordingConsole console;
    WeekTimeline::Input input{.records = records, .annotations = lone, .now = now};
    const auto week = WeekTimeline::columns(march(5, "12:00:00"), input, console, mondayFirst());
    ASSERT_THAT(week, SizeIs(7));
    EXPECT_THAT(geometries(week[1].activities), ElementsAre("1/2 at 45,260 size 28x40", "0/2 at 15,240 size 28x40",
                                                            "0/1 at 30,192 size 58x4", "0/1 at 30,185 size 58x10"));
    EXPECT_THAT(geometries(week[1].projects), ElementsAre("0/1 at 90,182 size 58x4"));
    EXPECT_THAT(week[2].activities, IsEmpty());
    input.annotations = pair;
    const auto both = WeekTimeline::columns(march(5, "12:00:00"), input, console, mondayFirst());
    EXPECT_THAT(geometries(both[1].projects), ElementsAre("0/2 at 75,459.997 size 28x39.9944",
                                                          "1/2 at 105,465 size 28x10", "0/1 at 90,10 size 58x20"));
    EXPECT_THAT(geometries(both[2].projects), ElementsAre("0/1 at 90,10 size 58x20"));
}

TEST(WeekTimelineTest, NamesAndColorsFallBack) {
    Records records{activity("", march(3, "11:00:00"), march(3, "13:00:00")),
                    activity("Editor", march(3, "09:00:00"), march(3, "10:00:00"))};
    records[0].appName.reset();
    records[1].bundleId = "org.example.editor";
    std::vector annotations{given("", march(3, "09:00:00"), march(3, "10:00:00"))};
    annotations[0].projectName.reset();
    annotations[0].projectColor.reset();
    RecordingConsole console;
    const auto column = WeekTimeline::columns(
        march(3, "12:00:00"), {.records = records, .annotations = annotations, .now = march(9, "00:00:00")}, console,
        mondayFirst())[1];
    EXPECT_EQ(column.activities[0].name, "Unknown");
    EXPECT_EQ(column.activities[0].color, AppColorPalette::hashedColor("unknown"));
    EXPECT_EQ(column.activities[1].color, AppColorPalette::hashedColor("org.example.editor"));
    EXPECT_EQ(column.projects[0].name, "Unknown");
    EXPECT_EQ(column.projects[0].tone, AppColorPalette::projectTone("fog"));
}

TEST(WeekTimelineLabelTest, IsCutByItsWidthAndByTheWidthOfItsCharacters) {
    const double widths[] = {23.9, 24, 36, 52, 100};
    for (const auto& row : textTable(QUORVANE_TIMELINE_DATA "/week-labels.txt")) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(weekTimelineLabel(row[0], 17.9, 20), std::nullopt);
        EXPECT_EQ(weekTimelineLabel(row[0], 18, 20)->text, row[1]);
        for (std::size_t i = 0; i < std::size(widths); ++i)
            EXPECT_EQ(weekTimelineLabel(row[0], widths[i], 20)->text, row[i + 1]) << widths[i];
    }
    EXPECT_EQ(weekTimelineLabel("", 18, 20)->text, "");
}

TEST(WeekTimelineLabelTest, LowBarsHaveSmallerLetters) {
    const auto sizes = [](double height) {
        const auto label = weekTimelineLabel("A", 20, height);
        return std::pair(label->fontSize(), label->capsuleHeight());
    };
    EXPECT_EQ(sizes(4), std::pair(8.0, 10.0));
    EXPECT_EQ(sizes(11.9), std::pair(8.0, 11.9));
    EXPECT_EQ(sizes(12), std::pair(9.0, 12.0));
    EXPECT_EQ(sizes(40), std::pair(9.0, 14.0));
}

}  // namespace
}  // namespace quorvane
