#include "tracking/ActivityTrackingPolicy.h"

#include <gmock/gmock.h>

namespace quorvane::ActivityTrackingPolicy {
namespace {

TEST(ActivityTrackingPolicyTest, MonitorsShortenTheMeasuredIdleTimeAndGraceEndsIt) {
    struct Row {
        const char* name;
        IdleReading reading;
        Seconds expected;
    };
    const Row rows[] = {
        {"system alone", {.systemIdle = 40s, .inputIdle = 5s}, 40s},
        {"monitor heard more", {.systemIdle = 40s, .inputIdle = 5s, .isMonitoring = true}, 5s},
        {"monitor heard less", {.systemIdle = 4s, .inputIdle = 50s, .isMonitoring = true}, 4s},
        {"just activated", {.systemIdle = 40s, .inputIdle = 50s, .isMonitoring = true, .inGrace = true}, 0s},
        {"just activated, no monitor", {.systemIdle = 40s, .inGrace = true}, 0s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(effectiveIdle(row.reading), row.expected);
    }
}

TEST(ActivityTrackingPolicyTest, GraceEndsWhenTheIntervalIsOver) {
    const Date activated = dateFromSecondsSince1970(1000);
    EXPECT_FALSE(isWithinForegroundGrace(std::nullopt, activated, 3s));
    EXPECT_TRUE(isWithinForegroundGrace(activated, activated + 2.999s, 3s));
    EXPECT_FALSE(isWithinForegroundGrace(activated, activated + 3s, 3s));
}

TEST(ActivityTrackingPolicyTest, BrowsersAreKnownLetterForLetter) {
    for (const char* id :
         {"com.apple.Safari", "com.google.Chrome.canary", "org.mozilla.firefox", "com.microsoft.edgemac"})
        EXPECT_TRUE(isBrowser(id)) << id;
    for (const char* id : {"", "com.apple.safari", "com.google.Chrome ", "org.mozilla.firefoxdeveloperedition"})
        EXPECT_FALSE(isBrowser(id)) << id;
}

}  // namespace
}  // namespace quorvane::ActivityTrackingPolicy
