#include "timeline/DayTimelineGeometry.h"

#include "store/StoredNames.h"
#include "support/Matching.h"

namespace quorvane {

void PrintTo(const TimeRange& range, std::ostream* out) {
    *out << range.startHour << " to " << range.endHour;
}

namespace DayTimelineGeometry {
namespace {

TEST(DayTimelineGeometryTest, WidthsGiveRoomToPanelsFromTheirThresholds) {
    struct Row {
        double width;
        TimelineViewMode mode;
        Widths expected;
    };
    using enum TimelineViewMode;
    const Row rows[] = {
        {200, day, {320, 270, false, false, 40, 56, 60}},
        {400, day, {400, 350, false, false, 80, 112, 120}},
        {859, day, {510, 460, false, false, 171.8, 859 * 0.28, 859 * 0.3}},
        {860, day, {510, 460, true, false, 172, 860 * 0.28, 258}},
        {1040, day, {510, 460, true, true, 208, 280, 300}},
        {1400, day, {510, 460, true, true, 250, 280, 300}},
        {1400, week, {510, 460, false, false, 250, 280, 300}},
        {1400, month, {510, 460, false, false, 250, 280, 300}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.width << " " << rawValue(row.mode));
        const Widths actual = widths(row.width, row.mode);
        EXPECT_EQ(actual.showsSidePanel, row.expected.showsSidePanel);
        EXPECT_EQ(actual.showsLeftList, row.expected.showsLeftList);
        EXPECT_THAT(
            (std::vector{actual.hourColumn, actual.drawing, actual.leftList, actual.detailsPanel, actual.projectPanel}),
            testing::Pointwise(testing::DoubleNear(1e-9),
                               {row.expected.hourColumn, row.expected.drawing, row.expected.leftList,
                                row.expected.detailsPanel, row.expected.projectPanel}));
    }
    EXPECT_EQ(headerDensity(499), HeaderDensity::minimal);
    EXPECT_EQ(headerDensity(500), HeaderDensity::small);
    EXPECT_EQ(headerDensity(700), HeaderDensity::regular);
    EXPECT_EQ(headerSpacing(headerDensity(699)), 8);
    EXPECT_EQ(headerSpacing(headerDensity(700)), 16);
}

TEST(DayTimelineGeometryTest, TheGridHasFourLinesForEachHour) {
    using enum GridLine::Form;
    const HourLayout layout({1}, 60);
    const auto lines = gridLines(layout, {1}, 400);
    ASSERT_EQ(lines.size(), 96);
    EXPECT_THAT(std::vector(lines.begin(), lines.begin() + 8),
                ElementsAre(GridLine{0, solid, 0.25}, GridLine{4, quarter, 0.10}, GridLine{8, half, 0.15},
                            GridLine{12, quarter, 0.10}, GridLine{16, solid, 0.45}, GridLine{31, quarter, 0.25},
                            GridLine{46, half, 0.30}, GridLine{61, quarter, 0.25}));
    EXPECT_TRUE(gridLines(layout, {1}, 50).empty());
}

TEST(DayTimelineGeometryTest, HoursSnapToAQuarterWithinSeventyTwoSeconds) {
    const std::pair<double, double> minutes[] = {{14, 15},   {59, 59},     {1.1, 0},   {1.3, 1.3}, {30, 30},
                                                 {46.1, 45}, {43.7, 43.7}, {7.5, 7.5}, {0, 0},     {840, 840}};
    for (const auto& [minute, expected] : minutes)
        EXPECT_DOUBLE_EQ(snapHour(10 + minute / 60), 10 + expected / 60) << minute;
}

TEST(DayTimelineGeometryTest, ADragBecomesARangeOfAQuarterAtLeast) {
    const HourLayout day({10, 11}, 180);  // 10:00 stands at 160
    const HourLayout empty({}, 180);
    struct Row {
        const char* name;
        SelectionRect drag;
        const HourLayout& layout;
        std::optional<TimeRange> expected;
    };
    const Row rows[] = {
        {"an hour", {{100, 160}, {300, 340}}, day, TimeRange{10, 11}},
        {"upwards", {{300, 340}, {100, 160}}, day, TimeRange{10, 11}},
        {"three minutes sideways", {{100, 160}, {300, 169}}, day, TimeRange{10, 10.25}},
        {"a click that shook", {{100, 160}, {106, 167}}, day, std::nullopt},
        {"ten points are a drag", {{100, 160}, {106, 168}}, day, TimeRange{10, 10.25}},
        {"beyond the ends", {{100, -50}, {100, 5000}}, day, TimeRange{0, 24}},
        {"an empty day", {{100, 160}, {100, 190}}, empty, TimeRange{10, 11.875}},
        {"at the very end", {{100, 384}, {120, 384}}, empty, TimeRange{24, 24.25}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(selectedRange(row.drag, row.layout), row.expected);
    }
}

TEST(DayTimelineGeometryTest, AClickHitsTheBlockOnTopAndThinOnesEightPointsHigh) {
    std::vector<ProcessedActivityItem> items(3);
    items[0] = {.appName = "long", .yTop = 0, .yBottom = 100};
    items[1] = {.appName = "short", .yTop = 40, .yBottom = 60};
    items[2] = {.appName = "thin", .yTop = 50, .yBottom = 52};
    struct Row {
        ChartPoint point;
        const char* expected;
    };
    const Row rows[] = {{{100, 10}, "long"},    {{100, 45}, "short"}, {{100, 50}, "thin"}, {{100, 58}, "thin"},
                        {{100, 58.5}, "short"}, {{100, 100}, "long"}, {{100, 100.5}, ""},  {{49.9, 10}, ""},
                        {{50, 10}, "long"},     {{400, 10}, "long"},  {{400.1, 10}, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.point.x << "," << row.point.y);
        const auto* hit = hitTest(items, row.point, 400);
        EXPECT_EQ(hit ? hit->appName : "", row.expected);
    }
}

TEST(DayTimelineGeometryTest, LanesShareTheWidthAndAreHitEachByItself) {
    EXPECT_EQ(laneSpan({0, 1}, 410), (LaneSpan{50, 360}));
    EXPECT_EQ(laneSpan({0, 2}, 410), (LaneSpan{50, 179}));
    EXPECT_EQ(laneSpan({1, 2}, 410), (LaneSpan{231, 179}));
    EXPECT_GT(laneSpan({499, 500}, 410).width, 0);
    const std::vector<ProcessedActivityItem> items{{.lane = {0, 2}, .appName = "left", .yBottom = 100},
                                                   {.lane = {1, 2}, .appName = "right", .yBottom = 100}};
    EXPECT_EQ(hitTest(items, {229, 50}, 410)->appName, "left");
    EXPECT_EQ(hitTest(items, {410, 50}, 410)->appName, "right");
    EXPECT_EQ(hitTest(items, {230, 50}, 410), nullptr);
}

TEST(DayTimelineGeometryTest, AnHourIsCentredByThePlaceInItsRow) {
    const HourLayout layout({10}, 180);
    for (const auto& [hour, fraction] : {std::pair(10.0, 0.5), {10.25, 0.25}, {10.75, 0.0}, {24.0, 0.0}})
        EXPECT_DOUBLE_EQ(centringFraction(layout, hour), fraction);
}

TEST(DayTimelineGeometryTest, TextsOfTooltips) {
    const ProcessedActivityItem item{.duration = 1.26, .appName = "Editor", .windowTitle = "main.cpp"};
    const Localization chinese("zh");
    EXPECT_THAT(tooltipLines(item, chinese), ElementsAre("Editor", "main.cpp", "时长: 1.3小时"));
    EXPECT_THAT(tooltipLines(TimeRange{604 / 60.0, 24}, {10, 270}, 180, chinese),
                ElementsAre("时间: 10:04-24:00", "鼠标位置: 1.5小时"));
    const ProcessedActivityItem nameless{.appName = std::string(StoredNames::unknownApp)};
    EXPECT_THAT(tooltipLines(nameless, Localization("en")), ElementsAre("Unknown app", "", "Duration: 0.0 h"));
}

}  // namespace
}  // namespace DayTimelineGeometry
}  // namespace quorvane
