#include "tracking/AbsenceWatch.h"

#include <utility>

namespace quorvane {
namespace {

constexpr Seconds anyLength{1e12};

}  // namespace

bool AbsenceWatch::begin(Date since, const ClockLook& look) {
    if (open_) return false;
    open_ = last_ && since <= lastEnd_ ? *last_ : Begun{since, look};
    return true;
}

std::optional<DateInterval> AbsenceWatch::end(const ClockLook& look) {
    last_ = std::exchange(open_, std::nullopt);
    lastEnd_ = look.now;
    if (!last_) return std::nullopt;
    const bool isKnown = ActivityTrackingPolicy::isUnbroken(last_->seenAt, look, anyLength) && last_->since < look.now;
    if (isKnown) return DateInterval{last_->since, look.now};
    last_.reset();
    return std::nullopt;
}

}  // namespace quorvane
