#include "tracking/MouseMonitor.h"

namespace quorvane {

MouseMonitor::MouseMonitor(platform::RunLoop& runLoop, platform::PointerEventSource& pointer, ConsoleSink& console)
    : InputMonitor(runLoop, console), pointer_(pointer) {}

MouseMonitor::~MouseMonitor() {
    MouseMonitor::stopMonitoring();
}

void MouseMonitor::startMonitoring() {
    if (isMonitoring()) {
        console_.line("MouseMonitor: 鼠标监控已在运行");
        return;
    }
    const auto heard = [this](platform::Point position) {
        lastMousePosition_ = position;
        noteActivity();
    };
    eventMonitor_ = pointer_.addGlobalMonitor(heard);
    if (!eventMonitor_) {
        console_.line("MouseMonitor: ⚠️ 无法创建全局事件监听器，可能需要辅助功能权限");
        eventMonitor_ = pointer_.addLocalMonitor(heard);
    }
    noteStart();
    lastMousePosition_ = pointer_.pointerPosition();
    console_.line("MouseMonitor: ✅ 鼠标监控已启动");
}

void MouseMonitor::stopMonitoring() {
    if (!isMonitoring()) return;
    eventMonitor_.reset();
    noteStop();
    console_.line("MouseMonitor: ⏹️ 鼠标监控已停止");
}

}  // namespace quorvane
