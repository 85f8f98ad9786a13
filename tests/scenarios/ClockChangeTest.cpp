#include "scenarios/SimulatedDay.h"

namespace quorvane {
namespace {

using testing::Contains;
using testing::ElementsAre;

class ClockChangeTest : public SimulatedDayTest {
protected:
    void SetUp() override {
        desktop.setFrontmostSilently("org.example.editor", "Editor");
        desktop.setIdleReading(0s);
        startTrackingAt("09:00:00");
        playUntil("09:30:00");
    }
};

TEST_F(ClockChangeTest, AClockSetBackGivesTheRecordItsOneSecondAndNoNegativeTime) {
    runLoop.setClock(runLoop.timeOfDay("08:30:00"));
    forgetLines();
    desktop.bringToFront("org.example.mail", "Mail");
    // The end can't lie before the start: one second is what is left, and that it reaches into the future is tolerated.
    const auto lines = from("ActivityTracker", newLines());
    EXPECT_THAT(
        lines,
        Contains(
            "ActivityTracker: ⚠️ 检测到 endTime 在未来 (2026-03-04 09:00:01 +0000)，夹回当前时间"));
    EXPECT_THAT(lines, Contains("ActivityTracker: Finalized record for Editor duration: 1.0s"));
    EXPECT_THAT(records(), ElementsAre(Seen{"Mail", "08:30:00", ""}, Seen{"Editor", "09:00:00.5", "09:00:01.5"}));
}

TEST_F(ClockChangeTest, AClockSetForwardEndsTheRecordThere) {
    runLoop.setClock(runLoop.timeOfDay("12:00:00"));
    desktop.bringToFront("org.example.mail", "Mail");
    EXPECT_THAT(records(), ElementsAre(Seen{"Editor", "09:00:00.5", "12:00:00"}, Seen{"Mail", "12:00:00", ""}));
}

TEST_F(ClockChangeTest, TheHeartbeatWaitsUntilTheClockHasPassedTheLastOne) {
    playUntil("09:40:05");
    const Date before = storedRecords().back()->updatedAt();
    runLoop.setClock(runLoop.timeOfDay("09:20:00"));
    runLoop.playFor(10min);
    EXPECT_EQ(storedRecords().back()->updatedAt(), before);
    runLoop.playFor(15min);
    EXPECT_GT(storedRecords().back()->updatedAt(), before);
}

}  // namespace
}  // namespace quorvane
