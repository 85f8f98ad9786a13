#pragma once

#include "base/Date.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/PointerEventSource.h"
#include "platform/RunLoop.h"

#include <functional>
#include <memory>

namespace quorvane {

/// Tells how long ago a button was pressed or a wheel turned, in any application, or at least in this one's windows
/// where the desktop refuses more. A pointer that only moves isn't activity. One for the process, main thread only.
class MouseMonitor {
public:
    MouseMonitor(platform::RunLoop& runLoop, platform::PointerEventSource& pointer, ConsoleSink& console);
    MouseMonitor(const MouseMonitor&) = delete;
    MouseMonitor& operator=(const MouseMonitor&) = delete;
    virtual ~MouseMonitor();

    /// True from a start to the next stop, also when the desktop refused every event.
    [[nodiscard]] virtual bool isMonitoring() const { return isMonitoring_; }

    /// Called at most once per 2 s of activity; none by default.
    std::function<void()> onActivity;

    virtual void startMonitoring();
    virtual void stopMonitoring();

    [[nodiscard]] virtual Date getLastActivityTime() const { return lastActivityTime_; }

    /// Now minus the last activity. It goes on growing while the monitor is stopped; a start sets it to 0.
    [[nodiscard]] virtual Seconds getIdleTime() const;

    [[nodiscard]] virtual platform::Point getCurrentMousePosition() const { return pointer_.pointerPosition(); }

private:
    void handleEvent(platform::Point position);

    platform::RunLoop& runLoop_;
    platform::PointerEventSource& pointer_;
    ConsoleSink& console_;
    std::unique_ptr<platform::PointerEventMonitor> eventMonitor_;
    Date lastActivityTime_;
    platform::Point lastMousePosition_;
    Date lastCallbackTime_;
    bool isMonitoring_ = false;
};

}  // namespace quorvane
