#include "shell/state/AutoStartManager.h"

#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSession.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const AutoStartAlert& alert, std::ostream* out) {
    *out << alert.message << " / " << alert.informativeText << " / " << alert.settingsButton;
}

namespace {

class AutoStartManagerTest : public testing::Test {
protected:
    platform::SimulatedRunLoop runLoop_{at("09:00:00")};
    platform::SimulatedLoginItem loginItem_;
    platform::SimulatedSettingsPanes panes_;
    RecordingConsole console_;
    Localization localization_{"zh"};
    AutoStartManager manager_{loginItem_, panes_, runLoop_, console_, localization_};
};

TEST_F(AutoStartManagerTest, SaysWhatItReadsAndWhatItChanges) {
    manager_.setAutoStart(true);
    EXPECT_TRUE(manager_.isAutoStartEnabled());
    manager_.setAutoStart(false);
    EXPECT_FALSE(manager_.isAutoStartEnabled());
    EXPECT_THAT(console_.lines(),
                ElementsAre("AutoStartManager: 自动启动状态 = false", "AutoStartManager: 正在注册",
                            "AutoStartManager: ✅ 成功注册登录项", "AutoStartManager: 自动启动状态 = true",
                            "AutoStartManager: 正在移除", "AutoStartManager: ✅ 成功移除登录项",
                            "AutoStartManager: 自动启动状态 = false"));
}

TEST_F(AutoStartManagerTest, ARefusalAsksTheUserAndLeavesTheSwitchOff) {
    std::vector<AutoStartAlert> alerts;
    int changes = 0;
    const auto failed = manager_.failed.subscribe([&](const AutoStartAlert& alert) { alerts.push_back(alert); });
    const auto changed = manager_.changed.subscribe([&] { ++changes; });
    loginItem_.refuse("read-only");
    console_.clear();
    manager_.setAutoStart(true);
    EXPECT_FALSE(manager_.isAutoStartEnabled());
    EXPECT_THAT(console_.lines(), ElementsAre("AutoStartManager: 正在注册", "AutoStartManager: 自动启动状态 = false",
                                              "AutoStartManager: ❌ 设置登录项失败: read-only"));
    EXPECT_THAT(alerts,
                ElementsAre(AutoStartAlert{
                    "设置开机自动启动失败",
                    "错误：read-only\n\n您可以手动在【系统设置 > 通用 > 登录项】中添加 Quorvane。", "打开系统设置"}));
    EXPECT_EQ(changes, 1);
    runLoop_.playFor(1s);
    EXPECT_EQ(changes, 2);
    panes_.hasProgram = false;
    manager_.setAutoStart(true);
    EXPECT_EQ(alerts.back().settingsButton, "");
    manager_.openLoginItemSettings();
    EXPECT_THAT(panes_.opened(), ElementsAre("x-apple.systempreferences:com.apple.LoginItems-Settings.extension"));
}

}  // namespace
}  // namespace quorvane
