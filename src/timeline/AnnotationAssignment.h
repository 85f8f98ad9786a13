#pragma once

#include "diagnostics/ConsoleSink.h"
#include "store/ModelContext.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "timeline/DayTimelineGeometry.h"

#include <memory>
#include <vector>

namespace quorvane {

/// What became of a stretch of time that was to be given to a project.
enum class AssignmentOutcome { saved, alreadyAssigned, tooManyProjects, failed };

/// A stretch of a day, and which instants that is: whatever day is shown later, it stays what was chosen.
struct ChosenRange {
    TimeRange hours;
    DateInterval instants;
};

/// A range of the day of `date`.
[[nodiscard]] ChosenRange chosenRange(const TimeRange& hours, Date date);

/// Gives the range to the project and saves it. A project gets no time twice, and no moment more than three projects;
/// the refusals and a failed save are printed, with nothing thrown. What could not be saved waits in the context.
AssignmentOutcome createAnnotation(ModelContext& context, const std::shared_ptr<Project>& project,
                                   const ChosenRange& range, ConsoleSink& console);

/// The annotations that share time with the range; touching it is not enough. Throws `StoreError`.
[[nodiscard]] std::vector<std::shared_ptr<ProjectTimeAnnotation>> annotationsOverlapping(ModelContext& context,
                                                                                         DateInterval range);

/// The annotations that begin on the day of `date`, by start. Throws `StoreError`.
[[nodiscard]] std::vector<std::shared_ptr<ProjectTimeAnnotation>> annotationsOfDay(ModelContext& context, Date date);

}  // namespace quorvane
