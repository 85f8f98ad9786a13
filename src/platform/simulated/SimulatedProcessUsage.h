#pragma once

#include "platform/ProcessUsage.h"

namespace quorvane::platform {

/// A process that takes what the test says.
class SimulatedProcessUsage final : public ProcessUsage {
public:
    [[nodiscard]] double cpuSeconds() const override { return cpuSeconds_; }
    [[nodiscard]] std::optional<MemoryUse> memory() const override { return memory_; }

    void burn(double seconds) { cpuSeconds_ += seconds; }
    void setMemory(std::optional<MemoryUse> memory) { memory_ = memory; }

private:
    double cpuSeconds_ = 0;
    std::optional<MemoryUse> memory_;
};

}  // namespace quorvane::platform
