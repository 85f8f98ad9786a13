#include "timeline/SnapshotTimeSlots.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double pushStep = 0.05;  // hours

/// The first hour at or after `target` that additions of the step to `hour` lead to. Each addition rounds, so that many
/// of them are not one multiplication; but from one power of two to the next all round alike and can be done at once,
/// exactly. That holds from hour 1: below, a sum may lie halfway between two numbers, and its neighbours round apart.
double pushedTo(double target, double hour) {
    while (hour < target) {
        const double next = hour + pushStep;
        const double gain = next - hour;
        if (gain == 0) return target;  // so far out that steps are lost in the rounding
        double count = 0;
        if (hour >= 1) count = std::floor((std::min(target, std::ldexp(1.0, std::ilogb(hour) + 1)) - hour) / gain);
        hour = count > 1 ? hour + count * gain : next;
    }
    return hour;
}

}  // namespace

double SnapshotTimeSlots::take(double startHour, double duration) {
    slots_.erase(slots_.begin(),
                 std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) { return slot.end > startHour; }));
    double hour = startHour;
    auto slot = slots_.begin();
    while (slot != slots_.end() && slot->start < hour + duration) {
        // Behind this slot, and behind the next ones as well while the gap before them is too small.
        double end = slot->end;
        for (++slot; slot != slots_.end() && slot->start < end + duration; ++slot)
            end = slot->end;
        hour = pushedTo(end, hour);
        slot = std::find_if(slot, slots_.end(), [&](const Slot& later) { return later.end > hour; });
    }
    slots_.insert(slot, {hour, hour + duration});
    return hour;
}

}  // namespace quorvane
