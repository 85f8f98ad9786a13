#include "session/LocalTime.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(LocalTimeTest, WritesDurationsWithAsManyHoursAsThereAre) {
    const std::pair<Seconds, const char*> rows[] = {
        {0s, "0:00:00"},
        {59.999s, "0:00:59"},
        {3599s, "0:59:59"},
        {3600s, "1:00:00"},
        {360'000s, "100:00:00"},
        {-5s, "0:00:00"},
        {Seconds{1e300}, "2562047788:00:54"},
    };
    for (const auto& [duration, expected] : rows)
        EXPECT_EQ(durationText(duration), expected);
}

}  // namespace
}  // namespace quorvane
