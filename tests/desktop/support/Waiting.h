#pragma once

#include "base/Date.h"

#include <functional>

namespace quorvane {

/// Serves the run loop until `condition` holds. False if it does not within the time.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition, Seconds timeout = 5s);

/// Serves the run loop for as long as it takes to see that `condition` stays as it is; true if it does.
[[nodiscard]] bool staysTrue(const std::function<bool()>& condition, Seconds duration = 0.3s);

/// Serves the run loop for so long and counts how often something woke it.
[[nodiscard]] int wakeUpsDuring(Seconds duration);

/// Time that only goes forward, for measuring.
[[nodiscard]] Seconds uptime();

}  // namespace quorvane
