#include "tracking/MouseMonitor.h"

namespace quorvane {
namespace {

constexpr Seconds minCallbackInterval = 2s;

}  // namespace

MouseMonitor::MouseMonitor(platform::RunLoop& runLoop, platform::PointerEventSource& pointer, ConsoleSink& console)
    : runLoop_(runLoop), pointer_(pointer), console_(console), lastActivityTime_(runLoop.now()),
      lastCallbackTime_(runLoop.now()) {}

MouseMonitor::~MouseMonitor() {
    MouseMonitor::stopMonitoring();
}

void MouseMonitor::startMonitoring() {
    if (isMonitoring_) {
        console_.line("MouseMonitor: 鼠标监控已在运行");
        return;
    }
    const auto heard = [this](platform::Point position) { handleEvent(position); };
    eventMonitor_ = pointer_.addGlobalMonitor(heard);
    if (!eventMonitor_) {
        console_.line("MouseMonitor: ⚠️ 无法创建全局事件监听器，可能需要辅助功能权限");
        eventMonitor_ = pointer_.addLocalMonitor(heard);
    }
    isMonitoring_ = true;
    lastActivityTime_ = runLoop_.now();
    lastMousePosition_ = pointer_.pointerPosition();
    console_.line("MouseMonitor: ✅ 鼠标监控已启动");
}

void MouseMonitor::stopMonitoring() {
    if (!isMonitoring_) return;
    eventMonitor_.reset();
    isMonitoring_ = false;
    console_.line("MouseMonitor: ⏹️ 鼠标监控已停止");
}

void MouseMonitor::handleEvent(platform::Point position) {
    const Date now = runLoop_.now();
    lastActivityTime_ = now;
    lastMousePosition_ = position;
    if (now - lastCallbackTime_ < minCallbackInterval) return;
    lastCallbackTime_ = now;
    if (onActivity) onActivity();
}

Seconds MouseMonitor::getIdleTime() const {
    return runLoop_.now() - lastActivityTime_;
}

}  // namespace quorvane
