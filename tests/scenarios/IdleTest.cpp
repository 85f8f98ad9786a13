#include "scenarios/SimulatedDay.h"

#include "store/AppPreference.h"

namespace quorvane {
namespace {

class IdleTest : public SimulatedDayTest {
protected:
    void SetUp() override { desktop.typeUntil("09:05:00"); }
    /// By an older program's row.
    void callAwayAfter(std::int64_t seconds) {
        const auto preference = std::make_shared<AppPreference>();
        preference->idleThresholdSeconds = seconds;
        store.context().insert(preference);
        store.context().save();
    }
};

TEST_F(IdleTest, TimeAwayIsAGapFromTheLastInputToTheReturn) {
    startTrackingAt("09:00:00");
    playUntil("09:20:03");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:00"));
    desktop.pressKey();
    EXPECT_THAT(records(), ElementsAre(testing::_, "Editor 09:20:03"));
}

TEST_F(IdleTest, WhereNobodyTellsOfTheReturnTheNextTickSeesIt) {
    desktop.refuseReturns();
    startTrackingAt("09:00:00");
    playUntil("09:20:03");
    desktop.typeUntil("09:30:00");
    playUntil("09:21:00");
    EXPECT_THAT(records(), ElementsAre(testing::_, "Editor 09:20:10"));
}

TEST_F(IdleTest, ThreeIdleTicksPauseTheMonitorsAndTheReturnResumesThem) {
    callAwayAfter(20);
    startTrackingAt("09:00:00");
    playUntil("09:05:10");
    forgetLines();
    playUntil("09:07:00");
    EXPECT_THAT(newLines(),
                ElementsAre("User is idle (20s >= 20s) - 基于键盘/鼠标监控",
                            "Finalized record for Editor duration: 299.5s",
                            "User is idle (30s >= 20s) - 基于键盘/鼠标监控", "No currentRecord to finalize",
                            "定时器频率已调整为 30秒 (用户空闲)", "KeyboardMonitor: ⏹️ 键盘监控已停止",
                            "MouseMonitor: ⏹️ 鼠标监控已停止",
                            "⏸️ 已暂停键盘和鼠标监控（空闲时节省 CPU）",
                            "User is idle (40s >= 20s) - 基于系统空闲时间", "No currentRecord to finalize",
                            "User is idle (70s >= 20s) - 基于系统空闲时间", "No currentRecord to finalize",
                            "User is idle (100s >= 20s) - 基于系统空闲时间", "No currentRecord to finalize"));
    EXPECT_EQ(desktop.keyTaps() + desktop.globalPointerMonitors(), 0);

    EXPECT_EQ(desktop.returnWatches(), 1);

    playUntil("09:07:05");
    desktop.pressKey();
    EXPECT_EQ(desktop.returnWatches(), 0);
    playUntil("09:07:06");
    EXPECT_THAT(newLines(),
                ElementsAre("KeyboardMonitor: ✅ 键盘监控已启动", "MouseMonitor: ✅ 鼠标监控已启动",
                            "▶️ 已恢复键盘和鼠标监控", "📱 App switch: Editor (org.example.editor)",
                            "No currentRecord to finalize", "DataCleanupService: 结束所有活跃记录...",
                            "Created new record for Editor at 2026-03-04 09:07:05 +0000",
                            "无法获取文档路径和窗口标题，将继续使用基本应用信息"));
}

TEST_F(IdleTest, AFilmIsPresenceIfThatIsWantedUntilTheTickThatSawItLast) {
    saveSettings([](AppSettings& settings) { settings.countsCallsAsPresence = true; });
    desktop.presence().show(true);
    startTrackingAt("09:00:00");
    playUntil("09:09:59");
    EXPECT_EQ(desktop.presence().questions(), 0) << "nothing hangs on it yet";
    playUntil("09:40:05");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5"));
    desktop.presence().show(false);
    playUntil("10:00:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:39:40"));
    desktop.presence().show(true);
    const int questions = desktop.presence().questions();
    playUntil("10:30:00");
    EXPECT_EQ(desktop.presence().questions(), questions) << "what begins while nobody is there shows nobody";
    EXPECT_EQ(records().size(), 1U);
}

TEST_F(IdleTest, AFilmOutweighsNeitherALockNorAnAnswerThatDoesNotCome) {
    saveSettings([](AppSettings& settings) { settings.countsCallsAsPresence = true; });
    desktop.presence().show(true);
    startTrackingAt("09:00:00");
    playUntil("09:20:05");
    desktop.lock();
    playUntil("09:30:05");
    desktop.unlock();
    desktop.bringToFront("org.example.editor", "Editor");
    desktop.pressKey();
    runLoop.holdBackground();
    playUntil("09:36:15");
    EXPECT_EQ(records().back(), "Editor 09:30:05 to 09:30:06");
    runLoop.releaseBackground();
    playUntil("09:40:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:19:40", "Editor 09:30:05 to 09:30:06"));
}

TEST_F(IdleTest, WithDetectionOffTheMonitorsStillPauseButNoTimeIsLost) {
    saveSettings([](AppSettings& settings) {
        settings.enableIdleDetection = false;
        settings.idleThresholdMinutes = 1;
    });
    startTrackingAt("09:00:00");
    playUntil("09:30:00");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5"));
    EXPECT_THAT(newLines(), Contains("⏸️ 已暂停键盘和鼠标监控（空闲时节省 CPU）"));
}

TEST_F(IdleTest, AThresholdOfZeroNeverOpensARecord) {
    saveSettings([](AppSettings& settings) { settings.idleThresholdMinutes = 0; });
    startTrackingAt("09:00:00");
    playUntil("09:00:30");
    EXPECT_THAT(records(), IsEmpty());
    EXPECT_THAT(newLines(), Contains("User is idle (0s >= 0s) - 基于键盘/鼠标监控"));
}

TEST_F(IdleTest, TheOlderPreferenceGivesTheThresholdWithoutSettings) {
    callAwayAfter(45);
    startTrackingAt("09:00:00");
    playUntil("09:10:00");
    EXPECT_THAT(newLines(), Contains("User is idle (70s >= 45s) - 基于键盘/鼠标监控"));
}

TEST_F(IdleTest, WithoutSettingsTheirDefaultOfFiveMinutesHolds) {
    startTrackingAt("09:00:00");
    playUntil("09:09:50");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5"));
    playUntil("09:10:50");
    EXPECT_THAT(newLines(), Contains(HasSubstr(" >= 300s)")));
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:00"));
}

TEST_F(IdleTest, AChangedThresholdCountsOnceTheCachedOneIsFiveMinutesOld) {
    const auto settings = saveSettings([](AppSettings& row) { row.idleThresholdMinutes = 1; });
    desktop.typeUntil("09:03:00");
    startTrackingAt("09:00:00");
    playUntil("09:01:00");
    settings->idleThresholdMinutes = 10;
    store.context().save();
    playUntil("09:04:30");
    EXPECT_THAT(newLines(), Contains("User is idle (70s >= 60s) - 基于键盘/鼠标监控"));
    playUntil("09:06:00");  // the new threshold has come into force by now, and the user counts as present again
    EXPECT_EQ(records().size(), 2U);
}

TEST_F(IdleTest, ANegativeReadingCountsAsZeroAndIsReportedEachTime) {
    startTrackingAt("09:00:00");
    playUntil("09:00:05");
    forgetLines();
    desktop.setIdleReading(-1.5s);
    playUntil("09:00:20");
    const std::string line = "⚠️ 检测到异常的负数空闲时间: -1.5s，已修正为0";
    EXPECT_THAT(newLines(), ElementsAre(line, line));
}

TEST_F(IdleTest, AnActivationOutweighsTheIdleTimeForThreeSecondsAndTheRecordThenGetsItsOneSecond) {
    callAwayAfter(20);
    startTrackingAt("09:00:00");
    playUntil("09:05:18");
    desktop.bringToFront("org.example.mail", "Mail");  // without input: 18 s after the last one
    playUntil("09:05:21");                             // the tick at :20 would have called the user idle
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:18", "Mail 09:05:18"));
    playUntil("09:05:31");  // the last input lies before the record's start
    EXPECT_EQ(records().back(), "Mail 09:05:18 to 09:05:19");
}

}  // namespace
}  // namespace quorvane
