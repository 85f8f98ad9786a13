#pragma once

#include "base/Date.h"

#include <chrono>

namespace quorvane::platform {

/// The moment at which an answer has to be there. By the clock that nobody sets.
class Deadline {
public:
    /// `patience` from now.
    explicit Deadline(Seconds patience);

    [[nodiscard]] bool isOver() const;

    /// Whole milliseconds up to it, rounded up; 0 once it is over.
    [[nodiscard]] int millisecondsLeft() const;

    /// `patience` from now, but not after this one.
    [[nodiscard]] Deadline within(Seconds patience) const;

private:
    std::chrono::steady_clock::time_point end_;
};

}  // namespace quorvane::platform
