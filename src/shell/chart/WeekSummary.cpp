#include "shell/chart/WeekSummary.h"

#include "timeline/ProjectTone.h"
#include "timeline/WeekTimeline.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quorvane {
namespace {

/// What the statistics ask of a record, cut to what is visible of it.
TimelineRecordSnapshot cutTo(DateInterval visible, const TimelineRecordSnapshot& record) {
    return {.id = record.id,
            .startTime = std::max(record.startTime, visible.start),
            .endTime = std::min(record.endTime.value_or(visible.end), visible.end),
            .bundleId = record.bundleId,
            .appName = record.appName};
}

/// By name and colour, as two projects may bear one name.
using ProjectHours = std::map<std::pair<std::string, std::string>, double>;

void addHours(ProjectHours& sums, DateInterval visible, std::span<const TimelineAnnotation> annotations) {
    for (const TimelineAnnotation& annotation : annotations) {
        const Date start = std::max(annotation.startTime, visible.start);
        const Date end = std::min(annotation.endTime, visible.end);
        if (start < end)
            sums[{annotation.projectName.value_or("Unknown"), annotation.projectColor.value_or("")}] +=
                (end - start) / 1h;
    }
}

std::vector<ProjectStat> projectStats(const ProjectHours& sums) {
    double total = 0;
    for (const auto& [project, hours] : sums)
        total += hours;
    std::vector<ProjectStat> stats;
    stats.reserve(sums.size());
    for (const auto& [project, hours] : sums)
        stats.push_back({.name = project.first,
                         .tone = AppColorPalette::projectTone(project.second),
                         .hours = hours,
                         .percentage = hours / total * 100});
    std::stable_sort(stats.begin(), stats.end(),
                     [](const ProjectStat& a, const ProjectStat& b) { return a.hours > b.hours; });
    return stats;
}

}  // namespace

WeekSummary weekSummary(std::span<const Date> days, const std::vector<DayRecords>& records,
                        std::span<const TimelineAnnotation> annotations, Date now) {
    WeekSummary summary;
    std::vector<TimelineRecordSnapshot> parts;
    ProjectHours projectHours;
    for (std::size_t i = 0; i < days.size(); ++i) {
        double& hours = summary.hours.emplace_back(0);
        const auto visible = WeekTimeline::visibleRange(days[i], now);
        if (!visible) continue;
        for (const TimelineRecordSnapshot* record : records[i]) {
            auto part = cutTo(*visible, *record);
            if (*part.endTime <= part.startTime) continue;
            hours += (*part.endTime - part.startTime) / 1h;
            parts.push_back(std::move(part));
        }
        addHours(projectHours, *visible, annotations);
    }
    summary.applications = appStatistics(parts, now).appStats;
    summary.projects = projectStats(projectHours);
    return summary;
}

}  // namespace quorvane
