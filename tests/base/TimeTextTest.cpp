#include "base/TimeText.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

TEST(TimeTextTest, EveryMinuteOfADayReadsAsItIs) {
    const Date noon = dateFromSecondsSince1970(1772625600);  // far enough from 1970 for a double to round
    for (int minute = 0; minute <= 1440; ++minute) {
        const auto clock = fmt::format("{:02}:{:02}", minute / 60, minute % 60);
        const auto length = minute < 60        ? fmt::format("{}m", minute)
                            : minute % 60 == 0 ? fmt::format("{}h", minute / 60)
                                               : fmt::format("{}h{}m", minute / 60, minute % 60);
        const double hours = minute / 60.0;
        double sum = minute / 60;  // the hour, then as a chart adds minutes up
        for (int i = 0; i < minute % 60; ++i)
            sum += 1 / 60.0;
        const Date start = noon + 0.1s;
        for (const Seconds given : {Seconds{minute * 1min}, Seconds{hours * 1h}, Seconds{sum * 1h},
                                    Seconds{(start + hours * 1h) - start}, Seconds{minute * 1min + 59.999s}}) {
            ASSERT_EQ(clockText(given), clock);
            ASSERT_EQ(lengthText(given), length);
            ASSERT_EQ(wholeMinutes(given), minute);
        }
    }
}

TEST(TimeTextTest, OnlyWhatIsBelowTheUnitIsCutOff) {
    EXPECT_EQ(wholeSeconds(59.999999s), 59);
    EXPECT_EQ(wholeSeconds(59.9999999s), 60);
    EXPECT_EQ(wholeSeconds(-59.5s), -59);
    EXPECT_EQ(lengthText(-30min), "-30m");
    EXPECT_EQ(lengthText(25h + 30min), "25h30m");
}

}  // namespace
}  // namespace quorvane
