#include "timeline/HourLayout.h"

#include <algorithm>
#include <cstddef>

namespace quorvane {

HourLayout::HourLayout() : HourLayout({}, inactiveHeight, defaultHourHeight) {}

HourLayout::HourLayout(const std::set<int>& activeHours, double hourHeight)
    : HourLayout(activeHours, hourHeight, inactiveHeight) {}

HourLayout::HourLayout(const std::set<int>& activeHours, double hourHeight, double otherHeight) {
    for (std::size_t hour = 0; hour < heights_.size(); ++hour) {
        heights_[hour] = activeHours.contains(static_cast<int>(hour)) ? hourHeight : otherHeight;
        offsets_[hour + 1] = offsets_[hour] + heights_[hour];
    }
}

double HourLayout::yPosition(double hour) const {
    if (!(hour > 0)) return 0;
    if (hour >= 24) return totalHeight();
    const auto row = static_cast<std::size_t>(hour);
    return offsets_[row] + (hour - static_cast<double>(row)) * (offsets_[row + 1] - offsets_[row]);
}

double HourLayout::hourForY(double y) const {
    if (!(y > 0)) return 0;
    if (y >= totalHeight()) return 24;
    // The first row that begins below; the one before it has a height, since it begins at or above.
    const auto* below = std::upper_bound(offsets_.begin(), offsets_.end() - 1, y);
    const auto row = static_cast<double>(below - offsets_.begin() - 1);
    return row + (y - below[-1]) / (below[0] - below[-1]);
}

}  // namespace quorvane
