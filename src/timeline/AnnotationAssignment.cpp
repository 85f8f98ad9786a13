#include "timeline/AnnotationAssignment.h"

#include "base/TimeText.h"
#include "store/StoreError.h"
#include "timeline/TimelineCalendar.h"

#include <algorithm>
#include <set>

namespace quorvane {
namespace {

constexpr std::size_t mostProjects = 3;  // at one moment

std::shared_ptr<ProjectTimeAnnotation> makeAnnotation(const std::shared_ptr<Project>& project, DateInterval range) {
    auto annotation = std::make_shared<ProjectTimeAnnotation>();
    annotation->startTime = range.start;
    annotation->endTime = range.end;
    annotation->project = project;
    annotation->updatedAt = annotation->createdAt();
    return annotation;
}

}  // namespace

ChosenRange chosenRange(const TimeRange& hours, Date date) {
    return {hours, instantsAt(hours, date, timelineCalendar())};
}

std::vector<std::shared_ptr<ProjectTimeAnnotation>> annotationsOverlapping(ModelContext& context, DateInterval range) {
    const auto start = field(&ProjectTimeAnnotation::startTime);
    const auto end = field(&ProjectTimeAnnotation::endTime);
    return context.fetch<ProjectTimeAnnotation>({.predicate = end > range.start && start.unindexed() < range.end});
}

std::vector<std::shared_ptr<ProjectTimeAnnotation>> annotationsOfDay(ModelContext& context, Date date) {
    const auto day = Calendar::current().day(date);
    const auto start = field(&ProjectTimeAnnotation::startTime);
    return context.fetch<ProjectTimeAnnotation>(
        {.predicate = start >= day.start && start < day.end,
         .sort = {ascending(&ProjectTimeAnnotation::startTime), ascending(&ProjectTimeAnnotation::id)}});
}

AssignmentOutcome createAnnotation(ModelContext& context, const std::shared_ptr<Project>& project,
                                   const ChosenRange& range, ConsoleSink& console) {
    try {
        std::set<Uuid> projects;
        for (const auto& annotation : annotationsOverlapping(context, range.instants))
            if (const auto other = annotation->project()) projects.insert(other->id());
        if (projects.contains(project->id())) {
            console.line("该时间段已经标注给项目: {}", project->name());
            return AssignmentOutcome::alreadyAssigned;
        }
        if (projects.size() >= mostProjects) {
            console.line("该时间段已达到最大项目数量限制（{}个）", mostProjects);
            return AssignmentOutcome::tooManyProjects;
        }
        context.insert(makeAnnotation(project, range.instants));
        context.save();
    } catch (const StoreError& error) {
        console.line("Failed to save ProjectTimeAnnotation: {}", error.what());
        return AssignmentOutcome::failed;
    }
    console.line("ProjectTimeAnnotation saved: {} from {} to {}", project->name(),
                 clockText(range.hours.startHour * 1h), clockText(range.hours.endHour * 1h));
    return AssignmentOutcome::saved;
}

}  // namespace quorvane
