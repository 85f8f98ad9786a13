#include "scenarios/SimulatedDay.h"

namespace quorvane {
namespace {

class ClockChangeTest : public SimulatedDayTest {
protected:
    void SetUp() override {
        desktop.typeUntil("15:00:00");
        startTrackingAt("09:00:00");
        playUntil("09:30:04");
    }
};

TEST_F(ClockChangeTest, AClockThatIsSetEndsTheRecordAtTheLastMomentKnownAndAnotherBeginsThere) {
    for (const char* time : {"08:30:00", "12:00:00"}) {
        SCOPED_TRACE(time);
        runLoop.setClock(runLoop.timeOfDay(time));
        runLoop.playFor(20s);
        ASSERT_NE(tracker->currentRecord(), nullptr);
        EXPECT_LE(tracker->currentRecord()->startTime() - runLoop.timeOfDay(time), 10s);
    }
    // The last sign of life before the clock went forward was a key.
    EXPECT_THAT(records(),
                ElementsAre("Editor 08:30:06 to 08:30:16", "Editor 09:00:00.5 to 09:30:00", "Editor 12:00:06"));
}

TEST_F(ClockChangeTest, AfterAClockSetBackIdlenessSwitchesAndHeartbeatsAreSeenAsEver) {
    runLoop.setClock(runLoop.timeOfDay("07:30:00"));
    runLoop.playFor(30s);
    const Date heartbeat = storedRecords().front()->updatedAt();
    runLoop.playFor(90s);
    EXPECT_GT(storedRecords().front()->updatedAt(), heartbeat);
    desktop.bringToFront("org.example.mail", "Mail");
    runLoop.playFor(60s);
    EXPECT_EQ(tracker->currentRecord()->appName(), "Mail");
    desktop.bringToFront("org.example.notes", "Notes");
    runLoop.playFor(5s);
    EXPECT_EQ(tracker->currentRecord()->appName(), "Notes");
    desktop.stopTyping();
    runLoop.playFor(7min);
    EXPECT_EQ(tracker->currentRecord(), nullptr);
    EXPECT_EQ(keyboard.getIdleTime(), desktop.idle().secondsSinceLastInput());
}

TEST_F(ClockChangeTest, ASleepThatNobodyAnnouncedIsNobodysTime) {
    runLoop.sleepFor(2h);
    runLoop.playFor(5s);  // the tick at the wake still found nobody there
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:30:00", "Editor 11:30:04"));
}

}  // namespace
}  // namespace quorvane
