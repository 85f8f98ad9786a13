#include "platform/simulated/SimulatedRunningApplications.h"

namespace quorvane::platform {

bool SimulatedRunningApplications::isRunning(const std::string& bundleIdentifier) {
    return running_.contains(bundleIdentifier);
}

bool SimulatedRunningApplications::isTerminated(std::int64_t processIdentifier) {
    return terminated_.contains(processIdentifier);
}

void SimulatedRunningApplications::setFrontmost(std::optional<RunningApplication> application) {
    frontmost_ = std::move(application);
    if (frontmost_ && frontmost_->bundleIdentifier) running_.insert(*frontmost_->bundleIdentifier);
}

void SimulatedRunningApplications::setRunning(const std::string& bundleIdentifier, bool runs) {
    if (runs)
        running_.insert(bundleIdentifier);
    else
        running_.erase(bundleIdentifier);
}

}  // namespace quorvane::platform
