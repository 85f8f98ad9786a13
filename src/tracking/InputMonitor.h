#pragma once

#include "base/Date.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"

#include <functional>

namespace quorvane {

/// What the monitors of the keyboard and the mouse share: whether they listen and when they last heard something.
class InputMonitor {
public:
    InputMonitor(const InputMonitor&) = delete;
    InputMonitor& operator=(const InputMonitor&) = delete;
    virtual ~InputMonitor() = default;

    /// True from a start that succeeded to the next stop.
    [[nodiscard]] virtual bool isMonitoring() const { return isMonitoring_; }

    /// Called at most once per 2 s of activity; none by default.
    std::function<void()> onActivity;

    virtual void startMonitoring() = 0;
    virtual void stopMonitoring() = 0;

    [[nodiscard]] virtual Date getLastActivityTime() const { return lastActivityTime_; }

    /// Time since the last activity, whatever happened to the clock. It goes on growing while the monitor is stopped; a
    /// start sets it to 0.
    [[nodiscard]] virtual Seconds getIdleTime() const;

protected:
    InputMonitor(platform::RunLoop& runLoop, ConsoleSink& console);

    /// It listens from now on, or no longer.
    void noteStart();
    void noteStop();

    /// Something was heard.
    void noteActivity();

    ConsoleSink& console_;

private:
    platform::RunLoop& runLoop_;
    Date lastActivityTime_;
    Seconds lastActivityAt_;  ///< this one and the next as uptime
    Seconds lastCallbackAt_;
    bool isMonitoring_ = false;
};

}  // namespace quorvane
