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
    EXPECT_FALSE(isWithinForegroundGrace(std::nullopt, 1000s, 3s));
    EXPECT_TRUE(isWithinForegroundGrace(1000s, 1002.999s, 3s));
    EXPECT_FALSE(isWithinForegroundGrace(1000s, 1003s, 3s));
}

TEST(ActivityTrackingPolicyTest, TimeIsUnbrokenWhileSomebodyLooksOftenAndTheClocksAgree) {
    struct Row {
        const char* name;
        Seconds passed;
        Seconds onTheWall;
        bool isUnbroken;
    };
    const Row rows[] = {
        {"a tick", 10s, 10s, true},
        {"corrected by the network", 10s, 11.5s, true},
        {"a sleep", 3600s, 3600s, false},
        {"a machine that stood still", 10s, 3600s, false},
        {"set back", 10s, -7200s, false},
        {"set forward", 0s, 259'200s, false},
        {"the longest there is", 20s, 20s, true},
    };
    const Date noon = dateFromSecondsSince1970(1'772'625'600);
    for (const Row& row : rows)
        EXPECT_EQ(isUnbroken({noon, 100s}, {noon + row.onTheWall, 100s + row.passed}, 20s), row.isUnbroken) << row.name;
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
