#pragma once

#include "base/Date.h"

#include <optional>
#include <string_view>

namespace quorvane {

/// One look at both clocks: that of the wall, which may be set, and the one that never jumps.
struct ClockLook {
    Date now;
    Seconds uptime{};
};

}  // namespace quorvane

/// What the tracker decides from values alone.
namespace quorvane::ActivityTrackingPolicy {

/// What the sources of input say at one instant.
struct IdleReading {
    Seconds systemIdle{};                         ///< since the last input to any process, >= 0
    Seconds inputIdle{};                          ///< the smaller of the keyboard's and the mouse's
    bool isMonitoring = false;                    ///< at least one monitor listens
    bool inGrace = false;                         ///< an application came to the front just now
    std::optional<Seconds> sinceQuietPresence{};  ///< since a call or a film showed that somebody is there
};

/// Seconds for which the user counts as away. A listening monitor or a call can only shorten what the system measured;
/// an activation within its grace period outweighs every measurement.
[[nodiscard]] Seconds effectiveIdle(const IdleReading& reading);

/// Does the activation at `activatedAt` still count as activity `interval` later at most? Both as uptime.
[[nodiscard]] bool isWithinForegroundGrace(std::optional<Seconds> activatedAt, Seconds uptime, Seconds interval);

/// Was somebody watching all the time between two looks? Not if more than `longest` lies between them, as after a sleep
/// that nobody announced, and not if the clocks disagree about it: then the wall clock was set, or the machine stood
/// still. Two seconds are allowed for what the network corrects.
[[nodiscard]] bool isUnbroken(const ClockLook& before, const ClockLook& after, Seconds longest);

/// Is this one of the browsers whose page the tick asks for? Letter for letter.
[[nodiscard]] bool isBrowser(std::string_view bundleId);

}  // namespace quorvane::ActivityTrackingPolicy
