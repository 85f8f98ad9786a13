#pragma once

#include <cstdint>
#include <optional>

namespace quorvane::platform {

/// Memory in bytes.
struct MemoryUse {
    std::int64_t resident = 0;  ///< what this process holds of it
    std::int64_t physical = 0;  ///< what the machine has
    friend bool operator==(const MemoryUse&, const MemoryUse&) = default;
};

/// What this process takes of the machine. From any thread.
class ProcessUsage {
public:
    virtual ~ProcessUsage() = default;

    /// Processor time of all threads since the start, in user and system mode, in seconds; 0 if it can't be learnt.
    [[nodiscard]] virtual double cpuSeconds() const = 0;

    [[nodiscard]] virtual std::optional<MemoryUse> memory() const = 0;
};

}  // namespace quorvane::platform
