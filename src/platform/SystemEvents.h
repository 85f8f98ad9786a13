#pragma once

#include "base/Signal.h"
#include "platform/Channel.h"

#include <functional>
#include <vector>

namespace quorvane::platform {

/// What happens to the machine and the session around the tracker. `sessionDidLeave`: another session is on the screen
/// now.
enum class SystemEvent {
    willSleep,
    didWake,
    screensDidSleep,
    screensDidWake,
    sessionDidLeave,
    sessionDidReturn,
    screenLocked,
    screenUnlocked
};

/// Reports sleep, wake, lock, unlock, and the change of sessions. Main thread only.
class SystemEvents {
public:
    virtual ~SystemEvents() = default;

    /// Calls `happened` each time that `event` does. For `willSleep` the machine waits until it has
    /// returned and what it posted has run.
    virtual Subscription observe(SystemEvent event, std::function<void()> happened) = 0;

    /// Somebody types or clicks now. Whether a lock that should keep them out still holds is looked into: lockers die
    /// without a word.
    virtual void noteInput() = 0;

    /// One for each source of these events: sleep, session lock, screens.
    [[nodiscard]] virtual std::vector<Channel> channels() const = 0;
};

}  // namespace quorvane::platform
