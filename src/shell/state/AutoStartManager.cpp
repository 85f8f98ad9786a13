#include "shell/state/AutoStartManager.h"

namespace quorvane {
namespace {

constexpr const char* loginItemsPane = "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";
constexpr Seconds reflectionDelay = 0.1s;

}  // namespace

AutoStartManager::AutoStartManager(platform::LoginItem& loginItem, platform::SettingsPanes& settingsPanes,
                                   platform::RunLoop& runLoop, ConsoleSink& console)
    : loginItem_(loginItem), settingsPanes_(settingsPanes), runLoop_(runLoop), console_(console) {
    refreshStatus();
}

void AutoStartManager::refreshStatus() {
    isAutoStartEnabled_ = loginItem_.isEnabled();
    console_.line("AutoStartManager: 自动启动状态 = {}", isAutoStartEnabled_);
    changed.send();
}

void AutoStartManager::setAutoStart(bool value) {
    const char* action = value ? "注册" : "移除";
    console_.line("AutoStartManager: 正在{}", action);
    const auto error = value ? loginItem_.registerItem() : loginItem_.unregisterItem();
    if (!error) console_.line("AutoStartManager: ✅ 成功{}登录项", action);
    refreshStatus();
    if (error) noteFailure(*error);
}

void AutoStartManager::noteFailure(const std::string& error) {
    console_.line("AutoStartManager: ❌ 设置登录项失败: {}", error);
    reflection_ = runLoop_.after(reflectionDelay, [this] { refreshStatus(); });
    failed.send({.message = "设置开机自动启动失败",
                 .informativeText = "错误：" + error + "\n\n您可以手动在【系统设置 > 通用 > 登录项】中添加 Quorvane。",
                 .settingsButton = settingsPanes_.canOpen(loginItemsPane) ? "打开系统设置" : ""});
}

void AutoStartManager::openLoginItemSettings() {
    settingsPanes_.open(loginItemsPane);
}

}  // namespace quorvane
