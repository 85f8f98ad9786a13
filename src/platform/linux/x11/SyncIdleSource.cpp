#include "platform/linux/x11/SyncIdleSource.h"

#include "platform/linux/x11/SyncCounter.h"

#include <xcb/sync.h>

namespace quorvane::platform {

SyncIdleSource::SyncIdleSource(X11Connection& x11) : x11_(x11), counter_(idleCounter(x11)) {}

Seconds SyncIdleSource::secondsSinceLastInput() {
    if (!counter_ || !x11_.isUsable()) return -1s;
    const auto answer = x11_.reply(xcb_sync_query_counter_reply, xcb_sync_query_counter(x11_.xcb(), counter_));
    if (!answer) return -1s;
    return std::chrono::milliseconds{(std::int64_t{answer->counter_value.hi} << 32) | answer->counter_value.lo};
}

Channel SyncIdleSource::channel() const {
    return idleCounterChannel(x11_, "system idle time", counter_ != 0);
}

}  // namespace quorvane::platform
