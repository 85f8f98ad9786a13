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
                                       "Editor 10:00:00 to 10:15:00", "Editor 11:00:10 to 12:00:40",
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
                            "📱 App switch: Editor (org.example.editor)",
                            "无法获取文档路径，使用窗口标题作为备用信息: chapter one - Editor",
                            "No currentRecord to finalize",
                            "Created new record for Editor at 2026-03-04 08:00:05 +0000"));

    tracker->start();
    EXPECT_THAT(newLines(), ElementsAre("Already tracking"));

    runLoop.playFor(1s);
    desktop.bringToFront("org.example.mail", "Mail");
    EXPECT_THAT(newLines(),
                ElementsAre("🔄 应用切换 - Mail", "📱 App switch: Mail (org.example.mail)",
                            "无法获取文档路径和窗口标题，将继续使用基本应用信息",
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

TEST_F(WorkingDayTest, ARecordOpenForMoreThanAnHourIsEndedThereByTheMaintenanceAndTheNextSwitchOpensAnother) {
    desktop.typeUntil("11:00:00");
    startTrackingAt("09:00:00");
    playUntil("10:40:00");
    desktop.bringToFront("org.example.mail", "Mail");
    playUntil("10:41:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 10:00:00.5", "Mail 10:40:00"));
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

TEST_F(WorkingDayTest, WindowDataIsReusedWithinAMinuteAndNeverChangesARunningRecord) {
    startTrackingAt("09:00:00");
    const auto titleAfterASwitchAt = [&](const char* time) {
        playUntil(time);
        desktop.bringToFront("org.example.mail", "Mail");
        runLoop.playFor(10s);
        desktop.bringToFront("org.example.editor", "Editor");
        return storedRecords().back()->windowTitle();
    };
    playUntil("09:00:20");
    desktop.setWindowTitle("two");
    playUntil("09:00:40");
    EXPECT_EQ(storedRecords().back()->windowTitle(), "chapter one - Editor");
    EXPECT_EQ(titleAfterASwitchAt("09:00:40"), "chapter one - Editor");
    EXPECT_THAT(newLines(), Contains("使用缓存的窗口信息（应用切换但缓存有效）"));
    EXPECT_EQ(titleAfterASwitchAt("09:01:50"), "two");
}

TEST_F(WorkingDayTest, WithoutAStoreTheLoopRunsOnAndSaysWhatIsMissing) {
    desktop.typeUntil("09:05:00");
    playUntil("09:00:00");
    tracker->start();
    playUntil("09:00:01");
    EXPECT_THAT(trackerLines(),
                ElementsAre("Starting tracking with modelContext: false", "✅ 已注册应用切换事件监听器（带防抖）",
                            "📱 App switch: Editor (org.example.editor)",
                            "无法获取文档路径，使用窗口标题作为备用信息: chapter one - Editor",
                            "No modelContext for finalizeCurrentRecord", "No modelContext for startNewRecord"));
    EXPECT_THAT(records(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
