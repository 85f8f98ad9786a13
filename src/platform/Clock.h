#pragma once

#include "base/Date.h"

#include <functional>

namespace quorvane::platform {

/// The wall clock in whole microseconds, for whoever has no run loop at hand: the default dates of new objects.
[[nodiscard]] Date currentDate();

/// Time since some instant of the past, in which the machine's sleep counts where the system tells it. It never steps,
/// whatever happens to the clock: what durations are measured with.
[[nodiscard]] Seconds uptime();

/// While it lives, `currentDate()` asks `now` instead: a virtual clock, or one instant for reproducible output.
/// Overrides nest; the newest answers. Main thread only.
class ClockOverride {
public:
    explicit ClockOverride(std::function<Date()> now);
    ClockOverride(const ClockOverride&) = delete;
    ClockOverride& operator=(const ClockOverride&) = delete;
    ~ClockOverride();

private:
    std::function<Date()> now_;
    const ClockOverride* outer_;
    friend Date currentDate();
};

}  // namespace quorvane::platform
