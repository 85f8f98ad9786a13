#include "tracking/KeyboardMonitor.h"

namespace quorvane {
namespace {

constexpr Seconds minCallbackInterval = 2s;
constexpr const char* inputMonitoringPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent";

}  // namespace

KeyboardMonitor::KeyboardMonitor(platform::RunLoop& runLoop, platform::KeyEventSource& keys,
                                 platform::SettingsPanes& settingsPanes, ConsoleSink& console)
    : runLoop_(runLoop), keys_(keys), settingsPanes_(settingsPanes), console_(console),
      lastActivityTime_(runLoop.now()), lastCallbackTime_(runLoop.now()) {}

KeyboardMonitor::~KeyboardMonitor() {
    KeyboardMonitor::stopMonitoring();
}

void KeyboardMonitor::startMonitoring() {
    if (isMonitoring_) {
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
    eventTap_ = keys_.createTap(platform::KeyEvents::keyDownAndUp, [this] { handleEvent(); });
    if (!eventTap_) {
        console_.line("KeyboardMonitor: ❌ 无法创建事件监听，可能缺少 Input Monitoring 权限");
        return;
    }
    if (!eventTap_->attach()) {
        console_.line("KeyboardMonitor: ❌ 无法创建 RunLoop Source");
        return;
    }
    eventTap_->enable(true);
    isMonitoring_ = true;
    lastActivityTime_ = runLoop_.now();
    console_.line("KeyboardMonitor: ✅ 键盘监控已启动");
}

void KeyboardMonitor::requestPermission() {
    console_.line("KeyboardMonitor: 正在请求 Input Monitoring 权限...");
    settingsPanes_.open(inputMonitoringPane);
}

void KeyboardMonitor::stopMonitoring() {
    if (!isMonitoring_) return;
    eventTap_->enable(false);
    eventTap_.reset();
    isMonitoring_ = false;
    console_.line("KeyboardMonitor: ⏹️ 键盘监控已停止");
}

void KeyboardMonitor::handleEvent() {
    const Date now = runLoop_.now();
    lastActivityTime_ = now;
    if (now - lastCallbackTime_ < minCallbackInterval) return;
    lastCallbackTime_ = now;
    if (onActivity) onActivity();
}

Seconds KeyboardMonitor::getIdleTime() const {
    return runLoop_.now() - lastActivityTime_;
}

}  // namespace quorvane
