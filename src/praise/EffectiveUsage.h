#pragma once

#include "timeline/AppStatistics.h"

#include <vector>

namespace quorvane {

/// How long each application was used, without the time that records share: what two records cover at once counts for
/// neither. Open records end `now`. Most hours first, among equals in the order of the records; those without a name
/// are called "unknown". The last record of an application decides its colour, for light surroundings; percentages are
/// of the sum of these hours.
[[nodiscard]] std::vector<AppStat> effectiveUsage(const std::vector<TimelineRecordSnapshot>& records, Date now);

}  // namespace quorvane
