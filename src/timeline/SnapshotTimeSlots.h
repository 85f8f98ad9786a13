#pragma once

#include <vector>

namespace quorvane {

/// The hours of a day that blocks have taken, for finding the next block a place where it overlaps none.
class SnapshotTimeSlots {
public:
    /// Takes a place for a block of `duration` (hours, >= 0) and returns the hour at which it begins: `startHour` if it
    /// is free there, else the first free hour that repeated additions of 0.05 lead to, however late. What ends by
    /// `startHour` is forgotten first, also for blocks to come that may begin earlier. Linear in the slots that are
    /// left, whatever their length.
    double take(double startHour, double duration);

private:
    struct Slot {
        double start;
        double end;
    };
    std::vector<Slot> slots_;  // by start; as no two overlap, by end too
};

}  // namespace quorvane
