#pragma once

#include "platform/ProcessUsage.h"

namespace quorvane::platform {

/// Asks `getrusage` for the processor time, a timer of the kernel for its alarms, and /proc for the memory.
class LinuxProcessUsage final : public ProcessUsage {
public:
    [[nodiscard]] double cpuSeconds() const override;
    [[nodiscard]] std::unique_ptr<UsageAlarm> onceUsed(double cpuSeconds, std::function<void()> fire) const override;
    [[nodiscard]] std::optional<MemoryUse> memory() const override;
};

}  // namespace quorvane::platform
