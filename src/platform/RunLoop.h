#pragma once

#include "base/Date.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// A repeating timer that runs until it is destroyed.
class Timer {
public:
    virtual ~Timer() = default;
};

/// Work that is due later. Destroying it cancels what has not run yet.
class WorkItem {
public:
    virtual ~WorkItem() = default;
};

/// The main thread's clocks, timers and queues. Main thread only, but for `now`, `uptime`, `post` and `isMainThread`.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// Wall-clock time, in whole microseconds. It may step backwards when the user or the network sets the clock.
    [[nodiscard]] virtual Date now() const = 0;

    /// Time since some instant of the past, sleep of the machine included. It never steps: how long ago something was
    /// is a difference of these and not of dates.
    [[nodiscard]] virtual Seconds uptime() const = 0;

    /// Calls `fire` every `interval` (> 0 s), first after one. A late timer fires once and not once for each interval
    /// that it missed. Destroying the timer cancels it, even inside `fire`.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(Seconds interval, std::function<void()> fire) = 0;

    /// Calls `work` once after `delay`.
    [[nodiscard]] virtual std::unique_ptr<WorkItem> after(Seconds delay, std::function<void()> work) = 0;

    /// Calls `work` on the main thread in a later turn of the loop, in the order of the calls. From any thread.
    virtual void post(std::function<void()> work) = 0;

    /// Runs `work` on a worker thread; see `inBackground`.
    virtual void background(std::function<void()> work) = 0;

    /// Is this the thread whose loop this is?
    [[nodiscard]] virtual bool isMainThread() const = 0;
};

}  // namespace quorvane::platform
