#pragma once

#include "base/Calendar.h"
#include "base/Date.h"
#include "base/Uuid.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"

#include <memory>
#include <vector>

namespace quorvane {

/// A stretch of a day that was given to a project, as the chart shows it. Hours are those on the clock, from midnight.
struct ProjectAnnotation {
    Uuid id;
    double startHour = 0;
    double endHour = 0;
    std::shared_ptr<Project> project;  ///< never none: a placeholder stands for one that is gone
    std::shared_ptr<ProjectTimeAnnotation> dbAnnotation;
    friend bool operator==(const ProjectAnnotation&, const ProjectAnnotation&) = default;
};

/// With its place among those that it overlaps.
struct PlacedProjectAnnotation {
    ProjectAnnotation annotation;
    int columnIndex = 0;   ///< from 0, at most 4
    int totalColumns = 1;  ///< at most 5
    friend bool operator==(const PlacedProjectAnnotation&, const PlacedProjectAnnotation&) = default;
};

/// The annotations that begin on the day of `selectedDate`, by start; those that overlap, one after the other, stand
/// side by side, each project in a column of its own. Main thread only; throws `StoreError` if a project can't be read.
[[nodiscard]] std::vector<PlacedProjectAnnotation>
placeProjectAnnotations(const std::vector<std::shared_ptr<ProjectTimeAnnotation>>& annotations, Date selectedDate,
                        const Calendar& calendar);

/// A bar's frame, in points; `x` and `y` are its centre.
struct BarFrame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const BarFrame&, const BarFrame&) = default;
};

/// Where the bar of an annotation stands on a chart of `totalWidth` with the 50 points of its gutter: at `yTop`, the
/// position of its start, and as high as its hours at `hourHeight`, whatever rows are collapsed; 10 points at least.
[[nodiscard]] BarFrame barFrame(const PlacedProjectAnnotation& placed, double hourHeight, double totalWidth,
                                double yTop);

}  // namespace quorvane
