#pragma once

#include "platform/SystemInfo.h"

namespace quorvane::platform {

/// What the kernel says of itself; its release is cut after the second number. Unknown parts are empty.
[[nodiscard]] SystemInfo linuxSystemInfo();

}  // namespace quorvane::platform
