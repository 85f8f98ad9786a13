#pragma once

#include <chrono>

namespace quorvane {

/// How long things move.
namespace Motion {
inline constexpr std::chrono::milliseconds press{80};
inline constexpr std::chrono::milliseconds thumb{120};
inline constexpr std::chrono::milliseconds sheetIn{160};
inline constexpr std::chrono::milliseconds panel{180};
inline constexpr std::chrono::milliseconds spinnerDelay{300};
inline constexpr std::chrono::milliseconds toastStay{4000};

/// False where the desktop asks for no animations: everything is immediate then. Main thread only.
[[nodiscard]] bool isAllowed();
void setAllowed(bool isAllowed);

/// The duration, or none where nothing may move.
[[nodiscard]] inline int milliseconds(std::chrono::milliseconds duration) {
    return isAllowed() ? static_cast<int>(duration.count()) : 0;
}
}  // namespace Motion

}  // namespace quorvane
