#pragma once

#include "platform/Accessibility.h"

#include <cstdint>
#include <optional>

namespace quorvane::AccessibilityWindowHelper {

/// The window of a process that has the focus, else its main or first one, else the one around what has the focus.
/// At most 21 questions; from any thread.
[[nodiscard]] std::optional<platform::AccessibleElement> focusedWindow(platform::Accessibility& accessibility,
                                                                       std::int64_t processId);

}  // namespace quorvane::AccessibilityWindowHelper
