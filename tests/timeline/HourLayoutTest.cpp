#include "timeline/HourLayout.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace quorvane {
namespace {

TEST(HourLayoutTest, CollapsesHoursInWhichNothingHappened) {
    EXPECT_EQ(HourLayout().totalHeight(), 4320);
    EXPECT_EQ(HourLayout({}, 180).totalHeight(), 384);
    EXPECT_EQ(HourLayout({0, 23}, 30).totalHeight(), 412);
    const HourLayout layout({9}, 360);
    EXPECT_EQ(layout.totalHeight(), 728);
    EXPECT_EQ(layout.heights()[8], 16);
    EXPECT_EQ(layout.heights()[9], 360);
    EXPECT_EQ(layout.offsets()[9], 144);
    EXPECT_EQ(layout.offsets()[10], 504);
}

TEST(HourLayoutTest, MapsHoursToPositionsAndBack) {
    const HourLayout layout({9, 23}, 180);  // 9 at 144, 10 at 324, 23 at 532, the end at 712
    struct Row {
        double hour;
        double y;
    };
    const Row rows[] = {{0, 0},    {0.5, 8},    {8.75, 140}, {9, 144},     {9.25, 189},
                        {10, 324}, {10.5, 332}, {23, 532},   {23.75, 667}, {24, 712}};
    for (const Row& row : rows) {
        EXPECT_EQ(layout.yPosition(row.hour), row.y);
        EXPECT_EQ(layout.hourForY(row.y), row.hour);
    }
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(layout.yPosition(-0.1), 0);
    EXPECT_EQ(layout.yPosition(24.4), 712);
    EXPECT_EQ(layout.yPosition(nan), 0);
    EXPECT_EQ(layout.hourForY(-5), 0);
    EXPECT_EQ(layout.hourForY(712.1), 24);
    EXPECT_EQ(layout.hourForY(nan), 0);
}

TEST(HourLayoutTest, IsContinuousAndItsTwoDirectionsUndoEachOther) {
    std::mt19937 random(9);
    for (int round = 0; round < 200; ++round) {
        std::set<int> active;
        for (int hour = 0; hour < 24; ++hour)
            if (random() % 2 == 0) active.insert(hour);
        const double height = 30 + static_cast<double>(random() % 331);
        const HourLayout layout(active, height);
        double lastY = -1;
        for (int step = 0; step <= 24 * 32; ++step) {
            const double hour = step / 32.0;
            const double y = layout.yPosition(hour);
            ASSERT_GT(y, lastY);
            ASSERT_LE(y - lastY, 1 + height / 32);
            ASSERT_NEAR(layout.hourForY(y), hour, 1e-12);
            lastY = y;
        }
    }
}

}  // namespace
}  // namespace quorvane
