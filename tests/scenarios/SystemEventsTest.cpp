#include "scenarios/SimulatedDay.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

class SystemEventsTest : public SimulatedDayTest {
protected:
    void SetUp() override { desktop.typeUntil("09:59:00"); }
};

TEST_F(SystemEventsTest, EachCloseEventEndsTheRecordWhenTheUserWasLastSeenAndEachResumeEventOpensAnother) {
    const struct {
        const char* name;
        std::function<void()> close;
        std::function<void()> resume;
        const char* closeLine;
        const char* resumeLine;
    } rows[] = {
        {"sleep", [&] { desktop.willSleep(); }, [&] { desktop.didWake(); }, "willSleep", "didWake -> tick"},
        {"screens", [&] { desktop.screensSleep(); }, [&] { desktop.screensWake(); }, "screensDidSleep",
         "screensDidWake -> tick"},
        {"another session", [&] { desktop.switchAway(); }, [&] { desktop.switchBack(); }, "sessionDidLeave",
         "sessionDidReturn -> tick"},
        {"lock", [&] { desktop.lock(); }, [&] { desktop.unlock(); }, "screenIsLocked", "screenIsUnlocked -> tick"},
    };
    startTrackingAt("09:00:00");
    std::vector<std::string> expected{"Editor 09:00:00.5"};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        runLoop.playFor(5min + 3s);
        forgetLines();
        const double tens = std::floor(secondsSince1970(runLoop.now()) / 10);  // when keys are pressed
        const Date lastSeen = dateFromSecondsSince1970(tens * 10);
        row.close();
        EXPECT_EQ(newLines().front(), row.closeLine);
        runLoop.playFor(1min);
        forgetLines();
        row.resume();
        EXPECT_EQ(newLines().front(), row.resumeLine);
        expected.back() += " to " + timeText(lastSeen);
        expected.push_back("Editor " + timeText(runLoop.now()));
        EXPECT_EQ(records(), expected);
        runLoop.playFor(54s);
    }
}

TEST_F(SystemEventsTest, InputIsReportedToWhoeverKnowsWhetherTheLockIsOver) {
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    desktop.lock();
    const Date lockedAt = runLoop.now();
    const auto noted = desktop.inputNoted().subscribe([&] {
        if (runLoop.now() - lockedAt >= 10s) desktop.unlock();
    });
    playUntil("09:02:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:01:00", "Editor 09:01:10"));
}

TEST_F(SystemEventsTest, TheLastKeyBeforeTheLockBelongsToTheRecord) {
    desktop.typeUntil("09:00:47.5", 0.5s);
    startTrackingAt("09:00:00");
    playUntil("09:00:48");
    desktop.lock();
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:00:47.5"));
}

TEST_F(SystemEventsTest, WhereInputIsNotToldTheDesktopKnowsTheLastOneBeforeTheLock) {
    desktop.refuseKeys();
    desktop.refuseGlobalPointer();
    startTrackingAt("09:00:00");
    playUntil("09:01:55");
    desktop.lock();
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:01:50"));
}

TEST_F(SystemEventsTest, ALockedSessionTicksWithoutRecording) {
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    desktop.lock();
    forgetLines();
    playUntil("09:01:15");
    EXPECT_THAT(newLines(), ElementsAre("Session locked - finalize current record", "No currentRecord to finalize"));
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:01:00"));
}

TEST_F(SystemEventsTest, ScreensThatWakeUnderTheLockShowTheLoginWindowWhichIsNobodysTime) {
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    desktop.lock();
    desktop.screensSleep();
    playUntil("09:10:00");
    forgetLines();
    desktop.screensWake();
    EXPECT_THAT(newLines(), ElementsAre("screensDidWake -> tick"));
    playUntil("09:12:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:01:00"));
    desktop.unlock();
    desktop.bringToFront("org.example.editor", "Editor");
    EXPECT_EQ(records().back(), "Editor 09:12:00");
}

TEST_F(SystemEventsTest, AcrossASleepNoTimeIsRecordedAndTheTimerTicksOnce) {
    startTrackingAt("09:00:00");
    playUntil("09:10:04");
    desktop.willSleep();
    forgetLines();
    runLoop.sleepFor(30min);
    desktop.didWake();
    desktop.pressKey();  // the tick at the wake still found nobody there
    const auto lines = newLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "No currentRecord to finalize"), 2);
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:10:00", "Editor 09:40:04"));
}

TEST_F(SystemEventsTest, WhileNothingCanBeSeenNoRecordIsOpen) {
    startTrackingAt("09:00:00");
    playUntil("09:10:04");
    EXPECT_TRUE(tracker->captureHealth().canSee());
    int changes = 0;
    const auto changed = tracker->captureHealthChanged.subscribe([&] { ++changes; });
    const auto seeing = desktop.foreground().channel();
    desktop.setForegroundChannel({.reason = "gone", .gives = platform::Sight::applications});
    playUntil("09:20:04");
    EXPECT_EQ(tracker->captureHealth().reason, "gone");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:10:00"));
    desktop.setForegroundChannel(seeing);
    playUntil("09:20:11");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(records().back(), "Editor 09:20:10");
}

TEST_F(SystemEventsTest, ABurstOfActivationsGivesOneTickAtOnceAndOneForTheLastASecondLater) {
    startTrackingAt("09:00:00");
    playUntil("09:05:03");
    forgetLines();
    desktop.bringToFront("org.example.mail", "Mail");
    runLoop.playFor(0.2s);
    desktop.bringToFront("org.example.chat", "Chat");
    runLoop.playFor(0.2s);
    desktop.bringToFront("org.example.notes", "Notes");
    runLoop.playFor(0.59s);
    EXPECT_EQ(records().back(), "Mail 09:05:03");
    runLoop.playFor(0.02s);
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:03", "Mail 09:05:03 to 09:05:04", "Notes 09:05:04"));
}

TEST_F(SystemEventsTest, AnActivationOfWhatIsInFrontOrOfNothingRunsNoTick) {
    startTrackingAt("09:00:00");
    playUntil("09:05:03");
    forgetLines();
    desktop.bringToFront("org.example.editor", "Editor");
    desktop.sendMalformedActivation();
    runLoop.playFor(2s);
    EXPECT_THAT(newLines(), IsEmpty());
}

TEST_F(SystemEventsTest, OurOwnWindowIsRecordedAQuarterSecondLaterUnlessSomethingElseComes) {
    startTrackingAt("09:00:00");
    playUntil("09:05:03");
    desktop.bringToFront("org.zelkor.Quorvane", "Quorvane");
    runLoop.playFor(0.1s);
    desktop.bringToFront("org.example.mail", "Mail");
    playUntil("09:06:00");
    desktop.bringToFront("org.zelkor.Quorvane", "Quorvane");
    runLoop.playFor(0.25s);
    EXPECT_THAT(records(),
                ElementsAre("Editor 09:00:00.5 to 09:05:04", "Mail 09:05:04 to 09:06:00.25", "Quorvane 09:06:00.25"));
}

TEST_F(SystemEventsTest, NoFrontmostApplicationClosesTheRecordAtTheTick) {
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    desktop.lock();
    desktop.setLockerShowsLoginWindow(false);
    desktop.noFrontmost();
    desktop.unlock();
    EXPECT_THAT(newLines(), Contains("No frontmost application"));
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:01:00"));
}

TEST_F(SystemEventsTest, WhenNoWindowHasTheFocusTheRecordEndsThereUnlessOneGetsItSoon) {
    startTrackingAt("09:00:00");
    playUntil("09:05:03");
    desktop.closeLastWindow();
    runLoop.playFor(6s);
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:03"));
    desktop.bringToFront("org.example.mail", "Mail");
    playUntil("09:06:03");
    desktop.closeLastWindow();
    runLoop.playFor(4s);
    desktop.bringToFront("org.example.notes", "Notes");
    runLoop.playFor(2s);
    EXPECT_EQ(records()[1], "Mail 09:05:09 to 09:06:07");
}

TEST_F(SystemEventsTest, ATickInsideATickIsSkippedAndTheOuterOneGoesOn) {
    struct : BrowserURLSource {
        std::optional<std::string> frontURL() override { return std::nullopt; }
        std::optional<std::string> toldURL() override {
            tracker->tick();
            return std::nullopt;
        }
        ActivityTracker* tracker = nullptr;
    } source;
    ActivityTracker nested(runLoop, desktop, keyboard, mouse, {.windowInfo = windowInfo, .browserURL = &source},
                           console);
    source.tracker = &nested;
    desktop.setFrontmostSilently("org.mozilla.firefox", "Firefox");
    playUntil("09:00:00");
    nested.configure(store.context());
    runLoop.runPosted();
    forgetLines();
    nested.tick();
    EXPECT_THAT(newLines(),
                ElementsAre("定时器频率已调整为 30秒 (用户空闲)", "📱 App switch: Firefox (org.mozilla.firefox)",
                            "No currentRecord to finalize", "⚠️ tick() 重入检测，跳过本次执行",
                            "DataCleanupService: 结束所有活跃记录...",
                            "Created new record for Firefox at 2026-03-04 09:00:00 +0000"));
    source.tracker = tracker.get();
    nested.tick();
    EXPECT_THAT(newLines(), Not(Contains("⚠️ tick() 重入检测，跳过本次执行")));
    runLoop.runPosted();  // a worker still asks the source
}

TEST_F(SystemEventsTest, ApplicationsWithoutIdentityHaveOneNameFromTheTickAndAnotherFromTheActivation) {
    desktop.setFrontmostSilently(std::nullopt, std::nullopt);
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    desktop.bringToFront(std::nullopt, std::nullopt);
    playUntil("09:02:00");
    const auto stored = storedRecords();
    ASSERT_EQ(stored.size(), 2U);
    EXPECT_EQ(stored[0]->appBundleId(), "unknown.bundle");
    EXPECT_EQ(stored[1]->appBundleId(), "unknown");
    EXPECT_EQ(stored[1]->appName(), "Unknown");
}

}  // namespace
}  // namespace quorvane
