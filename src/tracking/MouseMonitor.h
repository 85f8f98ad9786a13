#pragma once

#include "platform/PointerEventSource.h"
#include "tracking/InputMonitor.h"

#include <memory>

namespace quorvane {

/// Tells how long ago a button was pressed or a wheel turned, in any application, or at least in this one's windows
/// where the desktop refuses more. A pointer that only moves isn't activity. A start succeeds also when the desktop
/// refuses every event. One for the process, main thread only.
class MouseMonitor : public InputMonitor {
public:
    MouseMonitor(platform::RunLoop& runLoop, platform::PointerEventSource& pointer, ConsoleSink& console);
    ~MouseMonitor() override;

    void startMonitoring() override;
    void stopMonitoring() override;

    [[nodiscard]] virtual platform::Point getCurrentMousePosition() const { return pointer_.pointerPosition(); }

private:
    platform::PointerEventSource& pointer_;
    std::unique_ptr<platform::PointerEventMonitor> eventMonitor_;
    platform::Point lastMousePosition_;
};

}  // namespace quorvane
