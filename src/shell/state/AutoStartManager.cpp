#include "shell/state/AutoStartManager.h"

namespace quorvane {
namespace {

constexpr const char* loginItemsPane = "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";
constexpr Seconds reflectionDelay = 0.1s;

}  // namespace

AutoStartManager::AutoStartManager(platform::LoginItem& loginItem, platform::SettingsPanes& settingsPanes,
                                   platform::RunLoop& runLoop, ConsoleSink& console, const Localization& localization)
    : loginItem_(loginItem), settingsPanes_(settingsPanes), runLoop_(runLoop), console_(console),
      localization_(localization) {
    refreshStatus();
}

void AutoStartManager::refreshStatus() {
    isAutoStartEnabled_ = loginItem_.isEnabled();
    console_.line("AutoStartManager: 自动启动状态 = {}", isAutoStartEnabled_);
    changed.send();
}

void AutoStartManager::setAutoStart(bool value) {
    console_.write(value ? "AutoStartManager: 正在注册" : "AutoStartManager: 正在移除");
    const auto error = value ? loginItem_.registerItem() : loginItem_.unregisterItem();
    if (!error) console_.write(value ? "AutoStartManager: ✅ 成功注册登录项" : "AutoStartManager: ✅ 成功移除登录项");
    refreshStatus();
    if (error) noteFailure(*error);
}

void AutoStartManager::noteFailure(const std::string& error) {
    console_.line("AutoStartManager: ❌ 设置登录项失败: {}", error);
    reflection_ = runLoop_.after(reflectionDelay, [this] { refreshStatus(); });
    failed.send({.message = localization_.text("auto_start_failed_title"),
                 .informativeText = localization_.text("auto_start_failed_text", error),
                 .settingsButton =
                     settingsPanes_.canOpen(loginItemsPane) ? localization_.text("ui_permission_open_settings") : ""});
}

void AutoStartManager::openLoginItemSettings() {
    settingsPanes_.open(loginItemsPane);
}

}  // namespace quorvane
