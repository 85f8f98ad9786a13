#include "platform/linux/loop/Deadline.h"

#include <algorithm>
#include <cstdint>

namespace quorvane::platform {

using Clock = std::chrono::steady_clock;

Deadline::Deadline(Seconds patience) : end_(Clock::now() + std::chrono::duration_cast<Clock::duration>(patience)) {}

bool Deadline::isOver() const {
    return Clock::now() >= end_;
}

int Deadline::millisecondsLeft() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

Deadline Deadline::within(Seconds patience) const {
    Deadline earlier(patience);
    earlier.end_ = std::min(earlier.end_, end_);
    return earlier;
}

}  // namespace quorvane::platform
