#include "scenarios/SimulatedDay.h"

namespace quorvane {
namespace {

class WorkingDayTest : public SimulatedDayTest {
protected:
    void SetUp() override {
        desktop.setWindowTitle("chapter one - Editor");
        desktop.typeUntil("11:00:00");
    }
};

TEST_F(WorkingDayTest, ADayOfSwitchesBreaksAndALockedLunchLeavesExactRecords) {
    saveSettings([](AppSettings& settings) { settings.idleThresholdMinutes = 5; });
    desktop.typeUntil("10:15:00");
    startTrackingAt("09:00:00");

    playUntil("09:40:00");
    desktop.setWindowTitle("org.example.browser", "Invoices - Browser");
    desktop.bringToFront("org.example.browser", "Browser");
    playUntil("10:00:00");
    desktop.bringToFront("org.example.editor", "Editor");

    playUntil("11:00:00");  // a break from 10:15
    desktop.typeUntil("12:00:00");
    playUntil("12:01:00");
    desktop.lock();
    playUntil("13:00:00");
    desktop.typeUntil("13:50:00");
    desktop.unlock();
    playUntil("13:50:00");
    tracker->stop();

    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:40:00", "Browser 09:40:00 to 10:00:00",
                                       "Editor 10:00:00 to 10:15:00", "Editor 11:00:00 to 12:00:40",
                                       "Editor 13:00:00 to 13:50:00"));
    const auto stored = storedRecords();
    EXPECT_EQ(stored[0]->windowTitle(), "chapter one - Editor");
    EXPECT_EQ(stored[1]->windowTitle(), "Invoices - Browser");
    EXPECT_EQ(stored[1]->appBundleId(), "org.example.browser");
    EXPECT_EQ(stored[1]->source(), "system");
    EXPECT_EQ(stored[1]->billingStatus(), "review");
    EXPECT_EQ(stored[1]->documentPath(), std::nullopt);
}

TEST_F(WorkingDayTest, TheFirstMinuteOfTrackingPrintsItsStepsInOrder) {
    desktop.typeUntil("08:10:00");
    startTrackingAt("08:00:05");
    runLoop.playFor(1s);
    EXPECT_THAT(trackerLines(),
                ElementsAre("Starting tracking with modelContext: true", "✅ 已注册应用切换事件监听器（带防抖）",
                            "📱 App switch: Editor (org.example.editor)", "No currentRecord to finalize",
                            "Created new record for Editor at 2026-03-04 08:00:05 +0000",
                            "无法获取文档路径，使用窗口标题作为备用信息: chapter one - Editor"));

    tracker->start();
    EXPECT_THAT(newLines(), ElementsAre("Already tracking"));

    runLoop.playFor(1s);
    desktop.bringToFront("org.example.mail", "Mail");
    EXPECT_THAT(newLines(),
                ElementsAre("🔄 应用切换 - Mail", "📱 App switch: Mail (org.example.mail)",
                            "Finalized record for Editor duration: 1.5s", "短记录 (1.5s) for Editor，等待智能合并处理",
                            "Created new record for Mail at 2026-03-04 08:00:07 +0000"));
}

TEST_F(WorkingDayTest, MidnightNeitherEndsNorSplitsARecord) {
    playUntil("23:50:00");
    desktop.typeUntil(runLoop.now() + 20min);
    startTrackingAt("23:50:00");
    runLoop.playFor(20min);
    tracker->stop();
    EXPECT_THAT(records(), ElementsAre("Editor 23:50:00.5 to 00:10:00"));
}

TEST_F(WorkingDayTest, ThirtyHoursInOneApplicationAreThirtyHours) {
    desktop.typeUntil(runLoop.now() + 32h);
    startTrackingAt("09:00:00");
    runLoop.playFor(30h);
    desktop.bringToFront("org.example.mail", "Mail");
    runLoop.playFor(1min);
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 15:00:00", "Mail 15:00:00"));
}

TEST_F(WorkingDayTest, AReaderWhoTurnsAPageEveryFewMinutesLosesNone) {
    saveSettings([](AppSettings& settings) { settings.idleThresholdMinutes = 5; });
    desktop.typeUntil("12:00:00", 280s);
    startTrackingAt("09:00:00");
    playUntil("12:00:00");
    tracker->stop();
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 12:00:00"));
}

TEST_F(WorkingDayTest, TwoProfilesOfOneBrowserAreTwoKindsOfWork) {
    startTrackingAt("09:00:00");
    playUntil("09:30:00");
    desktop.setWindowTitle("Ledger - Browser - Office");
    playUntil("10:00:00");
    desktop.setWindowTitle("Recipes - Browser - Home");
    playUntil("10:20:00");
    tracker->stop();
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:30:10", "Editor 09:30:10 to 10:00:10",
                                       "Editor 10:00:10 to 10:20:00"));
}

TEST_F(WorkingDayTest, AStopEndsTheRecordWhenTheUserWasLastSeenAndAStartOpensAnother) {
    desktop.typeUntil("09:02:03");
    startTrackingAt("09:00:00");
    playUntil("09:02:07");
    tracker->toggle();
    EXPECT_FALSE(tracker->isTracking());
    EXPECT_EQ(desktop.systemEventObservers() + desktop.activationObservers(), 0);
    EXPECT_EQ(desktop.keyTaps() + desktop.globalPointerMonitors(), 0);
    playUntil("09:10:00");
    desktop.typeUntil("09:20:00");
    tracker->toggle();
    playUntil("09:11:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:02:03", "Editor 09:10:00.5"));
}

TEST_F(WorkingDayTest, AnotherTitleThatStandsForATickBeginsARecordThatBeganWhenItWasFirstSeen) {
    startTrackingAt("09:00:00");
    playUntil("09:00:25");
    desktop.setWindowTitle("chapter two - Editor");
    playUntil("09:00:35");
    desktop.setWindowTitle("*chapter two (1) - Editor");  // flickers
    playUntil("09:01:01");
    desktop.setWindowTitle("a glance - Editor");
    playUntil("09:01:11");
    desktop.setWindowTitle("chapter two - Editor");
    playUntil("09:02:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:00:30", "Editor 09:00:30"));
    EXPECT_EQ(storedRecords().front()->windowTitle(), "chapter one - Editor");
    EXPECT_EQ(storedRecords().back()->windowTitle(), "*chapter two (1) - Editor") << "as it is at the second look";
}

TEST_F(WorkingDayTest, WhoWantsNoneForTitlesGetsOneRecordThatKeepsItsOwn) {
    saveSettings([](AppSettings& settings) { settings.splitsRecordsByTitle = false; });
    startTrackingAt("09:00:00");
    playUntil("09:00:25");
    desktop.setWindowTitle("two");
    playUntil("09:05:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5"));
    EXPECT_EQ(storedRecords().back()->windowTitle(), "chapter one - Editor");
    desktop.bringToFront("org.example.mail", "Mail");
    runLoop.playFor(10s);
    desktop.bringToFront("org.example.editor", "Editor");
    EXPECT_EQ(storedRecords().back()->windowTitle(), "two") << "read fresh at each switch";
}

TEST_F(WorkingDayTest, ADocumentComesFromAWorkerAndIsReusedWithItsTitleForAMinute) {
    struct : WindowInfoSource {
        WindowInfo windowInfo(const std::string&) override {
            return {.title = "chapter one - Editor", .document = "/home/mia/" + std::to_string(++asked)};
        }
        int asked = 0;
    } documents;
    tracker = std::make_unique<ActivityTracker>(runLoop, desktop, keyboard, mouse,
                                                TrackerServices{.windowInfo = documents}, console);
    runLoop.holdBackground();
    startTrackingAt("09:00:00");
    playUntil("09:00:10");
    EXPECT_EQ(tracker->currentRecord()->documentPath(), std::nullopt);  // and nobody waits for it
    runLoop.releaseBackground();
    const auto documentAfterASwitchAt = [&](const char* time) {
        playUntil(time);
        desktop.bringToFront("org.example.mail", "Mail");
        runLoop.playFor(10s);
        desktop.bringToFront("org.example.editor", "Editor");
        runLoop.runPosted();
        return tracker->currentRecord()->documentPath();
    };
    EXPECT_EQ(documentAfterASwitchAt("09:00:40"), "/home/mia/1");
    EXPECT_EQ(documentAfterASwitchAt("09:01:50"), "/home/mia/4") << "asked for again, as for the mail";
    tracker.reset();
}

TEST_F(WorkingDayTest, WithoutAStoreTheLoopRunsOnAndSaysWhatIsMissing) {
    desktop.typeUntil("09:05:00");
    playUntil("09:00:00");
    tracker->start();
    playUntil("09:00:01");
    EXPECT_THAT(trackerLines(),
                ElementsAre("Starting tracking with modelContext: false", "✅ 已注册应用切换事件监听器（带防抖）",
                            "📱 App switch: Editor (org.example.editor)", "No modelContext for finalizeCurrentRecord",
                            "No modelContext for startNewRecord"));
    EXPECT_THAT(records(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
