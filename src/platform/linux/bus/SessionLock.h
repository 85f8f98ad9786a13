#pragma once

#include "platform/RunLoop.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// Whether the session is locked, from sources that repeat and contradict each other. The last word counts, and only
/// what changes anything is passed on.
class SessionLock {
public:
    /// `changed` hears the new state.
    SessionLock(RunLoop& runLoop, std::function<void(bool isLocked)> changed);

    /// Somebody asks the locker to lock or unlock. Where no locker runs nobody ever reports that the lock has ended, so
    /// one that is not confirmed in time is forgotten.
    void noteRequest(bool lock);

    /// The locker, or the session for it, says how things stand.
    void noteState(bool isLocked);

    /// How things stood when we came; nobody is told.
    void begin(bool isLocked);

    [[nodiscard]] bool isLocked() const { return isLocked_; }

    /// Locked for ten seconds: who works now may not be locked out any more.
    [[nodiscard]] bool isDoubtful() const;

private:
    void set(bool isLocked);

    RunLoop& runLoop_;
    std::function<void(bool)> changed_;
    std::unique_ptr<WorkItem> confirmation_;
    bool isLocked_ = false;
    Seconds changedAt_{};  ///< as uptime
};

}  // namespace quorvane::platform
