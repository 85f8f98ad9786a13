#pragma once

#include "base/Date.h"

#include <functional>

namespace quorvane::platform {

/// Work off the main thread, one piece after another in the order in which it came. From any thread, but for `stop`.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;  ///< Stops it.

    virtual void post(std::function<void()> work) = 0;

    /// Calls `fire` on the queue every `interval` (> 0 s), first after one, until the timer or the queue ends; each
    /// call may come up to `leeway` late, so that the machine wakes once for several of its timers. A queue has one
    /// timer at a time.
    virtual void every(Seconds interval, Seconds leeway, std::function<void()> fire) = 0;

    /// Ends the timer, if there is one: no call begins any more. On the queue, be it inside `fire`.
    virtual void endTimer() = 0;

    /// Waits for what runs, drops what waits, and takes nothing more. Not from the queue itself.
    virtual void stop() = 0;
};

}  // namespace quorvane::platform
