#pragma once

#include "platform/ProcessUsage.h"

#include <vector>

namespace quorvane::platform {

/// A process that takes what the test says. Its alarms call from inside `burn`.
class SimulatedProcessUsage final : public ProcessUsage {
public:
    [[nodiscard]] double cpuSeconds() const override { return cpuSeconds_; }
    [[nodiscard]] std::unique_ptr<UsageAlarm> onceUsed(double cpuSeconds, std::function<void()> fire) const override;
    [[nodiscard]] std::optional<MemoryUse> memory() const override { return memory_; }

    void burn(double seconds);
    void setMemory(std::optional<MemoryUse> memory) { memory_ = memory; }

    bool hasAlarms = true;  ///< the machine knows them

private:
    struct Wait {
        double end = 0;  ///< in processor time
        std::function<void()> fire;
    };
    class Alarm;

    double cpuSeconds_ = 0;
    std::optional<MemoryUse> memory_;
    mutable std::vector<std::weak_ptr<Wait>> waits_;  ///< of the alarms
};

}  // namespace quorvane::platform
