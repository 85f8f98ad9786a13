#include "tracking/InputMonitor.h"

namespace quorvane {
namespace {

constexpr Seconds minCallbackInterval = 2s;

}  // namespace

InputMonitor::InputMonitor(platform::RunLoop& runLoop, ConsoleSink& console)
    : console_(console), runLoop_(runLoop), lastActivityTime_(runLoop.now()), lastCallbackTime_(runLoop.now()) {}

Seconds InputMonitor::getIdleTime() const {
    return runLoop_.now() - lastActivityTime_;
}

void InputMonitor::noteStart() {
    isMonitoring_ = true;
    lastActivityTime_ = runLoop_.now();
}

void InputMonitor::noteStop() {
    isMonitoring_ = false;
}

void InputMonitor::noteActivity() {
    const Date now = runLoop_.now();
    lastActivityTime_ = now;
    if (now - lastCallbackTime_ < minCallbackInterval) return;
    lastCallbackTime_ = now;
    if (onActivity) onActivity();
}

}  // namespace quorvane
