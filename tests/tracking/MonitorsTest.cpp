#include "platform/simulated/SimulatedDesktop.h"
#include "support/RecordingConsole.h"
#include "tracking/KeyboardMonitor.h"
#include "tracking/MouseMonitor.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

using testing::ElementsAre;

class MonitorsTest : public testing::Test {
protected:
    MonitorsTest() {
        keyboard.onActivity = [this] { ++keyboardCalls; };
        mouse.onActivity = [this] { ++mouseCalls; };
    }
    platform::SimulatedRunLoop runLoop{dateFromSecondsSince1970(1'772'611'200)};
    platform::SimulatedDesktop desktop{runLoop};
    RecordingConsole console;
    KeyboardMonitor keyboard{runLoop, desktop.keys(), desktop.settingsPanes(), console};
    MouseMonitor mouse{runLoop, desktop.pointer(), console};
    int keyboardCalls = 0;
    int mouseCalls = 0;
};

TEST_F(MonitorsTest, ActivityIsReportedAtMostOncePerTwoSecondsWhileTheIdleTimeStaysAtZero) {
    keyboard.startMonitoring();
    mouse.startMonitoring();
    desktop.pressKey();
    desktop.click();
    EXPECT_EQ(keyboardCalls + mouseCalls, 0);  // made less than two seconds ago
    for (int i = 0; i < 100; ++i) {
        runLoop.playFor(0.1s);
        desktop.pressKey();
        desktop.releaseKey();
        desktop.scroll();
        EXPECT_EQ(keyboard.getIdleTime(), 0s);
        EXPECT_EQ(mouse.getIdleTime(), 0s);
    }
    EXPECT_EQ(keyboardCalls, 5);
    EXPECT_EQ(mouseCalls, 5);
}

TEST_F(MonitorsTest, KeyUpAndClicksCountAndAMovingPointerDoesNot) {
    keyboard.startMonitoring();
    mouse.startMonitoring();
    runLoop.playFor(10s);
    desktop.movePointer({5, 5});
    EXPECT_EQ(mouse.getIdleTime(), 10s);
    EXPECT_EQ(mouse.getCurrentMousePosition(), (platform::Point{5, 5}));
    desktop.click();
    EXPECT_EQ(mouse.getIdleTime(), 0s);
    desktop.releaseKey();
    EXPECT_EQ(keyboard.getIdleTime(), 0s);
}

TEST_F(MonitorsTest, AStopFreezesTheLastActivityAndAStartForgetsIt) {
    keyboard.startMonitoring();
    runLoop.playFor(10s);
    keyboard.stopMonitoring();
    keyboard.stopMonitoring();
    runLoop.playFor(10s);
    desktop.pressKey();
    EXPECT_EQ(keyboard.getIdleTime(), 20s);
    EXPECT_EQ(desktop.keyTaps(), 0);
    keyboard.startMonitoring();
    EXPECT_EQ(keyboard.getIdleTime(), 0s);
    keyboard.startMonitoring();
    EXPECT_THAT(console.lines(),
                ElementsAre("KeyboardMonitor: ✅ 键盘监控已启动", "KeyboardMonitor: ⏹️ 键盘监控已停止",
                            "KeyboardMonitor: ✅ 键盘监控已启动", "KeyboardMonitor: 键盘监控已在运行"));
}

TEST_F(MonitorsTest, EveryRefusalOfTheKeyboardLeavesItOffAndOnlyAMissingPermissionOpensThePane) {
    struct Row {
        const char* name;
        void (platform::SimulatedDesktop::*refuse)(bool);
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        {"no permission",
         &platform::SimulatedDesktop::refuseKeys,
         {"KeyboardMonitor: ⚠️ Input Monitoring 权限未授权",
          "KeyboardMonitor: 正在请求 Input Monitoring 权限..."}},
        {"no real tap",
         &platform::SimulatedDesktop::refuseSecondTap,
         {"KeyboardMonitor: ❌ 无法创建事件监听，可能缺少 Input Monitoring 权限"}},
        {"no source", &platform::SimulatedDesktop::refuseAttach, {"KeyboardMonitor: ❌ 无法创建 RunLoop Source"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        console.clear();
        (desktop.*row.refuse)(true);
        keyboard.startMonitoring();
        (desktop.*row.refuse)(false);
        EXPECT_FALSE(keyboard.isMonitoring());
        EXPECT_EQ(console.lines(), row.lines);
        EXPECT_THAT(desktop.openedPanes(),
                    ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent"));
    }
}

TEST_F(MonitorsTest, AMouseWithoutPermissionHearsOurOwnWindowsAndCountsAsListening) {
    desktop.refuseGlobalPointer();
    mouse.startMonitoring();
    EXPECT_TRUE(mouse.isMonitoring());
    EXPECT_EQ(desktop.localPointerMonitors(), 1);
    runLoop.playFor(10s);
    desktop.click(platform::SimulatedDesktop::Over::otherApplication);
    EXPECT_EQ(mouse.getIdleTime(), 10s);
    desktop.click(platform::SimulatedDesktop::Over::ownWindow);
    EXPECT_EQ(mouse.getIdleTime(), 0s);
    mouse.stopMonitoring();
    desktop.refuseLocalPointer();
    mouse.startMonitoring();
    EXPECT_TRUE(mouse.isMonitoring());
}

}  // namespace
}  // namespace quorvane
