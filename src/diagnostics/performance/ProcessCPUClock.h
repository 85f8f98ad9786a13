#pragma once

#include "base/Date.h"

#include <optional>

namespace quorvane {

/// Turns readings of the process's own processor time into its load.
class ProcessCPUClock {
public:
    /// Percent of one core since the reading before: above 100 with several busy cores. None for the first reading, and
    /// when the wall clock has not gone forward. `cpuSeconds` that shrink count as no load.
    [[nodiscard]] std::optional<double> sample(Date now, double cpuSeconds);

private:
    std::optional<double> lastCPUSeconds_;
    std::optional<Date> lastWall_;
};

}  // namespace quorvane
