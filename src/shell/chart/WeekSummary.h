#pragma once

#include "timeline/AppStatistics.h"
#include "timeline/ProjectTone.h"
#include "timeline/RecordsForDate.h"
#include "timeline/TimelineAnnotation.h"

#include <span>
#include <string>
#include <vector>

namespace quorvane {

/// How long was given to one project.
struct ProjectStat {
    std::string name;
    ProjectTone tone;
    double hours = 0;
    double percentage = 0;  ///< of all hours, 0 to 100
    friend bool operator==(const ProjectStat&, const ProjectStat&) = default;
};

/// The sums of a week. Everything counts with the part that lies in its days and before now.
struct WeekSummary {
    std::vector<double> hours;          ///< recorded on each of the days
    std::vector<AppStat> applications;  ///< most hours first
    std::vector<ProjectStat> projects;  ///< most hours first, among equals by name
};

/// `records` holds the list of each of `days`, short records included.
[[nodiscard]] WeekSummary weekSummary(std::span<const Date> days, const std::vector<DayRecords>& records,
                                      std::span<const TimelineAnnotation> annotations, Date now);

}  // namespace quorvane
