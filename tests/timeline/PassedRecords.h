#pragma once

#include "support/Builders.h"
#include "timeline/DayTimelineChart.h"

namespace quorvane {

/// Passes all records of a store to a chart, as its owner passes those of a day.
inline void passAllRecords(ModelContext& context, DayTimelineChart& chart) {
    const DateInterval always{distantPast, at("2100-01-01 00:00:00")};
    chart.setRecords(recordsTouching(context, always), always);
}

}  // namespace quorvane
