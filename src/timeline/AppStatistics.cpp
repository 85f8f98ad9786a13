#include "timeline/AppStatistics.h"

#include "timeline/AppColorPalette.h"

#include <algorithm>
#include <unordered_map>

namespace quorvane {
AppStatistics appStatistics(const std::vector<TimelineRecordSnapshot>& records, Date now) {
    AppStatistics statistics;
    auto& stats = statistics.appStats;
    std::unordered_map<std::string, std::size_t> places;
    for (const TimelineRecordSnapshot& record : records) {
        const auto [place, isNew] = places.try_emplace(record.displayName(), stats.size());
        if (isNew) stats.push_back({.id = Uuid::random(), .appName = place->first});
        AppStat& stat = stats[place->second];
        stat.hours += (record.endTime.value_or(now) - record.startTime) / 1h;
        stat.color = AppColorPalette::appColor(record.bundleId, record.appName);
    }
    for (const AppStat& stat : stats)
        statistics.totalHours += stat.hours;
    if (statistics.totalHours > 0)
        for (AppStat& stat : stats)
            stat.percentage = stat.hours / statistics.totalHours * 100;
    std::stable_sort(stats.begin(), stats.end(), [](const AppStat& a, const AppStat& b) { return a.hours > b.hours; });
    return statistics;
}

}  // namespace quorvane
