#pragma once

#include "platform/RunningApplications.h"

#include <set>

namespace quorvane::platform {

/// Applications that run as a test says.
class SimulatedRunningApplications : public RunningApplications {
public:
    [[nodiscard]] std::optional<RunningApplication> frontmost() override { return frontmost_; }
    [[nodiscard]] bool isRunning(const std::string& bundleIdentifier) override;
    [[nodiscard]] bool isTerminated(std::int64_t processIdentifier) override;

    /// It runs and is in front.
    void setFrontmost(std::optional<RunningApplication> application);
    void setRunning(const std::string& bundleIdentifier, bool runs);
    void setTerminated(std::int64_t processIdentifier) { terminated_.insert(processIdentifier); }

private:
    std::optional<RunningApplication> frontmost_;
    std::set<std::string> running_;
    std::set<std::int64_t> terminated_;
};

}  // namespace quorvane::platform
