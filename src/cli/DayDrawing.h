#pragma once

#include "base/Date.h"
#include "timeline/AnnotationLayout.h"
#include "timeline/HourLayout.h"
#include "timeline/ProcessedActivityItem.h"

#include <functional>
#include <set>
#include <string_view>
#include <vector>

namespace quorvane::cli {

/// A day as the day chart has it.
struct DayChart {
    Date date;
    std::vector<ProcessedActivityItem> items;  ///< in draw order
    std::set<int> activeHours;
    HourLayout layout;
    std::vector<PlacedProjectAnnotation> annotations;

    [[nodiscard]] double totalHours() const;
};

/// Draws the day for a terminal: a line for each quarter of an hour in which something happened, with the blocks that
/// the chart shows there on their colours, and the projects of that time; hours without anything are one line together.
void drawDay(const DayChart& chart, const std::function<void(std::string_view)>& write);

}  // namespace quorvane::cli
