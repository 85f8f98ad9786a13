#include "platform/simulated/FrontRunningApplications.h"

namespace quorvane::platform {

std::optional<RunningApplication> FrontRunningApplications::frontmost() {
    const auto front = foreground_.frontmostApplication();
    if (!front) return std::nullopt;
    return RunningApplication{.processIdentifier = 1,
                              .bundleIdentifier = front->bundleIdentifier,
                              .localizedName = front->localizedName,
                              .windowTitle = foreground_.frontmostWindowTitle().value_or("")};
}

bool FrontRunningApplications::isRunning(const std::string& bundleIdentifier) {
    const auto front = foreground_.frontmostApplication();
    return front && front->bundleIdentifier == bundleIdentifier;
}

}  // namespace quorvane::platform
