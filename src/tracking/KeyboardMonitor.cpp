#include "tracking/KeyboardMonitor.h"

namespace quorvane {
namespace {

constexpr const char* inputMonitoringPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent";

}  // namespace

KeyboardMonitor::KeyboardMonitor(platform::RunLoop& runLoop, platform::KeyEventSource& keys,
                                 platform::SettingsPanes& settingsPanes, ConsoleSink& console)
    : InputMonitor(runLoop, console), keys_(keys), settingsPanes_(settingsPanes) {}

KeyboardMonitor::~KeyboardMonitor() {
    KeyboardMonitor::stopMonitoring();
}

void KeyboardMonitor::startMonitoring() {
    if (isMonitoring()) {
        console_.line("KeyboardMonitor: 键盘监控已在运行");
        return;
    }
    if (const auto probe = keys_.createTap(platform::KeyEvents::keyDown, [] {}); probe) {
        probe->enable(false);
    } else {
        console_.line("KeyboardMonitor: ⚠️ Input Monitoring 权限未授权");
        requestPermission();
        return;
    }
    eventTap_ = keys_.createTap(platform::KeyEvents::keyDownAndUp, [this] { noteActivity(); });
    if (!eventTap_) {
        console_.line("KeyboardMonitor: ❌ 无法创建事件监听，可能缺少 Input Monitoring 权限");
        return;
    }
    if (!eventTap_->attach()) {
        console_.line("KeyboardMonitor: ❌ 无法创建 RunLoop Source");
        return;
    }
    eventTap_->enable(true);
    noteStart();
    console_.line("KeyboardMonitor: ✅ 键盘监控已启动");
}

void KeyboardMonitor::requestPermission() {
    console_.line("KeyboardMonitor: 正在请求 Input Monitoring 权限...");
    settingsPanes_.open(inputMonitoringPane);
}

void KeyboardMonitor::stopMonitoring() {
    if (!isMonitoring()) return;
    eventTap_->enable(false);
    eventTap_.reset();
    noteStop();
    console_.line("KeyboardMonitor: ⏹️ 键盘监控已停止");
}

}  // namespace quorvane
