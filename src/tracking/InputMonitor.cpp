#include "tracking/InputMonitor.h"

namespace quorvane {
namespace {

constexpr Seconds minCallbackInterval = 2s;

}  // namespace

InputMonitor::InputMonitor(platform::RunLoop& runLoop, ConsoleSink& console)
    : console_(console), runLoop_(runLoop), lastActivityTime_(runLoop.now()), lastActivityAt_(runLoop.uptime()),
      lastCallbackAt_(runLoop.uptime()) {}

Seconds InputMonitor::getIdleTime() const {
    return runLoop_.uptime() - lastActivityAt_;
}

void InputMonitor::noteStart() {
    isMonitoring_ = true;
    lastActivityTime_ = runLoop_.now();
    lastActivityAt_ = runLoop_.uptime();
}

void InputMonitor::noteStop() {
    isMonitoring_ = false;
}

void InputMonitor::noteActivity() {
    lastActivityTime_ = runLoop_.now();
    lastActivityAt_ = runLoop_.uptime();
    if (lastActivityAt_ - lastCallbackAt_ < minCallbackInterval) return;
    lastCallbackAt_ = lastActivityAt_;
    if (onActivity) onActivity();
}

}  // namespace quorvane
