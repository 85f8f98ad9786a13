#pragma once

#include "base/Date.h"
#include "base/Uuid.h"

#include <span>
#include <vector>

namespace quorvane {

/// The part of the width in which something stands beside what it overlaps: one of `count` lanes of equal width.
struct Lane {
    int index = 0;  ///< from 0
    int count = 1;
    friend bool operator==(const Lane&, const Lane&) = default;
};

struct LaneItem {
    Uuid id;
    DateInterval stretch;
};

/// A lane for each item, in the order given. Items that share a moment, or are joined by others that do, have one
/// number of lanes: as few as there are at one moment at most. Touching is no overlap. By start, among equals by id,
/// each takes the first lane that is free. n log n.
[[nodiscard]] std::vector<Lane> lanesOf(std::span<const LaneItem> items);

}  // namespace quorvane
