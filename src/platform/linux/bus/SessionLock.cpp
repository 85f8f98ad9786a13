#include "platform/linux/bus/SessionLock.h"

#include <utility>

namespace quorvane::platform {
namespace {

/// Lockers that report at all do so within a fraction of this.
constexpr Seconds timeToConfirm = 5s;

/// The lock may have been typed and clicked itself, and what one had begun goes on for a moment.
constexpr Seconds untilDoubtful = 10s;

}  // namespace

SessionLock::SessionLock(RunLoop& runLoop, std::function<void(bool)> changed)
    : runLoop_(runLoop), changed_(std::move(changed)) {}

void SessionLock::noteRequest(bool lock) {
    if (lock == isLocked_) return;
    confirmation_ = lock ? runLoop_.after(timeToConfirm, [this] { set(false); }) : nullptr;
    set(lock);
}

void SessionLock::noteState(bool isLocked) {
    confirmation_.reset();
    set(isLocked);
}

void SessionLock::begin(bool isLocked) {
    isLocked_ = isLocked;
    changedAt_ = runLoop_.uptime();
}

bool SessionLock::isDoubtful() const {
    return isLocked_ && runLoop_.uptime() - changedAt_ >= untilDoubtful;
}

void SessionLock::set(bool isLocked) {
    if (isLocked == isLocked_) return;
    begin(isLocked);
    changed_(isLocked);
}

}  // namespace quorvane::platform
