#pragma once

#include "base/Color.h"
#include "base/Date.h"
#include "base/Uuid.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// How long one application was used.
struct AppStat {
    Uuid id;              ///< fresh for each computation
    std::string appName;  ///< `StoredNames::unknownApp` for the records without a name
    double hours = 0;
    Color color = colorFromRgb(0x8E8E93);  ///< grey until a record brings one
    double percentage = 0;                 ///< of all hours, 0 to 100
    friend bool operator==(const AppStat&, const AppStat&) = default;
};

struct AppStatistics {
    std::vector<AppStat> appStats;  ///< most hours first, among equals in the order of the records
    double totalHours = 0;
    friend bool operator==(const AppStatistics&, const AppStatistics&) = default;
};

/// Hours and share of each application. Open records count until `now`, and all of them as long as they are: none is
/// left out for being short. The last record of an application decides its colour.
[[nodiscard]] AppStatistics appStatistics(const std::vector<TimelineRecordSnapshot>& records, Date now);

}  // namespace quorvane
