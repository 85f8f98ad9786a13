#include "diagnostics/performance/ProcessCPUClock.h"

#include <algorithm>

namespace quorvane {

std::optional<double> ProcessCPUClock::sample(Date now, double cpuSeconds) {
    std::optional<double> percent;
    if (lastCPUSeconds_ && lastWall_ && now > *lastWall_)
        percent = std::max(cpuSeconds - *lastCPUSeconds_, 0.0) / Seconds(now - *lastWall_).count() * 100;
    lastCPUSeconds_ = cpuSeconds;
    lastWall_ = now;
    return percent;
}

}  // namespace quorvane
