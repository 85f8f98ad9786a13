#pragma once

#include "platform/linux/x11/X11Connection.h"

namespace quorvane::platform {

/// The counter in which the X server has the milliseconds since the last input (extension SYNC); 0: it has none.
[[nodiscard]] std::uint32_t idleCounter(X11Connection& x11);

/// The answer of a source that stands on that counter.
[[nodiscard]] Channel idleCounterChannel(const X11Connection& x11, std::string question, bool hasCounter);

}  // namespace quorvane::platform
