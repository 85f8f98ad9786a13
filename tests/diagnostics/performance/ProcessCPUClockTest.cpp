#include "diagnostics/performance/ProcessCPUClock.h"

#include "base/Date.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(ProcessCPUClockTest, TellsTheLoadBetweenTwoReadingsAndNothingWithoutTime) {
    const Date start = dateFromSecondsSince1970(1'772'000'000);
    const std::tuple<const char*, Seconds, double, std::optional<double>> rows[] = {
        {"the first only seeds", 0s, 5.0, std::nullopt},
        {"half a core", 4s, 7.0, 50.0},
        {"three cores", 6s, 13.0, 300.0},
        {"nothing", 7s, 13.0, 0.0},
        {"the same instant", 7s, 14.0, std::nullopt},
        {"counts from the reading that gave nothing", 8s, 14.5, 50.0},
        {"the clock is set back", 2s, 20.0, std::nullopt},
        {"and goes on from there", 4s, 20.5, 25.0},
        {"a reading that failed", 6s, 0.0, 0.0},
        {"and the spike after it", 8s, 20.5, 1025.0},
        {"which the next one corrects", 10s, 20.5, 0.0}};
    ProcessCPUClock clock;
    for (const auto& [name, at, cpuSeconds, percent] : rows)
        EXPECT_EQ(clock.sample(start + at, cpuSeconds), percent) << name;
}

}  // namespace
}  // namespace quorvane
