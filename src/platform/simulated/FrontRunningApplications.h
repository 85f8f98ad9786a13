#pragma once

#include "platform/ForegroundSource.h"
#include "platform/RunningApplications.h"

namespace quorvane::platform {

/// One application runs: the one that a foreground has in front.
class FrontRunningApplications final : public RunningApplications {
public:
    explicit FrontRunningApplications(ForegroundSource& foreground) : foreground_(foreground) {}

    [[nodiscard]] std::optional<RunningApplication> frontmost() override;
    [[nodiscard]] bool isRunning(const std::string& bundleIdentifier) override;
    [[nodiscard]] bool isTerminated(std::int64_t) override { return false; }

private:
    ForegroundSource& foreground_;
};

}  // namespace quorvane::platform
