#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace quorvane::platform {

/// Memory in bytes.
struct MemoryUse {
    std::int64_t resident = 0;  ///< what this process holds of it
    std::int64_t physical = 0;  ///< what the machine has
    friend bool operator==(const MemoryUse&, const MemoryUse&) = default;
};

/// Waits until this process has used the processor. Destroying it cancels it, and waits for its call if that runs.
class UsageAlarm {
public:
    virtual ~UsageAlarm() = default;
};

/// What this process takes of the machine. From any thread.
class ProcessUsage {
public:
    virtual ~ProcessUsage() = default;

    /// Processor time of all threads since the start, in user and system mode, in seconds; 0 if it can't be learnt.
    [[nodiscard]] virtual double cpuSeconds() const = 0;

    /// Calls `fire` once, on a thread of the alarm's own, when all threads together have used `cpuSeconds` (> 0) more
    /// than now, and wakes nobody before. Null if the machine can't. `fire` must not destroy the alarm.
    [[nodiscard]] virtual std::unique_ptr<UsageAlarm> onceUsed(double cpuSeconds, std::function<void()> fire) const = 0;

    [[nodiscard]] virtual std::optional<MemoryUse> memory() const = 0;
};

}  // namespace quorvane::platform
