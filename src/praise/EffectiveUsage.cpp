#include "praise/EffectiveUsage.h"

#include "timeline/AppColorPalette.h"

#include <algorithm>
#include <unordered_map>

namespace quorvane {
namespace {

/// A record begins or ends.
struct Edge {
    Date date;
    std::size_t record;
    bool isStart;
};

std::vector<Edge> edgesOf(const std::vector<TimelineRecordSnapshot>& records, Date now) {
    std::vector<Edge> edges;
    edges.reserve(2 * records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        const Date end = records[i].endTime.value_or(now);
        if (end <= records[i].startTime) continue;
        edges.push_back({records[i].startTime, i, true});
        edges.push_back({end, i, false});
    }
    std::ranges::sort(edges, {}, &Edge::date);
    return edges;
}

/// The time in which each record is the only one. A sweep from edge to edge: while one record runs, the sum of the
/// places of those that run is its place.
std::vector<Seconds> effectiveDurations(const std::vector<TimelineRecordSnapshot>& records, Date now) {
    std::vector<Seconds> durations(records.size(), 0s);
    std::size_t running = 0;
    std::size_t placeSum = 0;
    Date reached;
    for (const Edge& edge : edgesOf(records, now)) {
        if (running == 1) durations[placeSum] += edge.date - reached;
        reached = edge.date;
        if (edge.isStart) {
            ++running;
            placeSum += edge.record;
        } else {
            --running;
            placeSum -= edge.record;
        }
    }
    return durations;
}

}  // namespace

std::vector<AppStat> effectiveUsage(const std::vector<TimelineRecordSnapshot>& records, Date now) {
    const std::vector<Seconds> durations = effectiveDurations(records, now);
    std::vector<AppStat> stats;
    std::unordered_map<std::string, std::size_t> places;
    double totalHours = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const TimelineRecordSnapshot& record = records[i];
        const auto [place, isNew] = places.try_emplace(record.appName.value_or("unknown"), stats.size());
        if (isNew) stats.push_back({.id = Uuid::random(), .appName = place->first});
        AppStat& stat = stats[place->second];
        stat.hours += durations[i] / 1h;
        stat.color = AppColorPalette::appColor(record.bundleId, record.appName);
        totalHours += durations[i] / 1h;
    }
    if (totalHours > 0)
        for (AppStat& stat : stats)
            stat.percentage = stat.hours / totalHours * 100;
    std::ranges::stable_sort(stats, std::ranges::greater{}, &AppStat::hours);
    return stats;
}

}  // namespace quorvane
