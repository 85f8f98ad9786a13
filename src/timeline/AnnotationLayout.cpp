#include "timeline/AnnotationLayout.h"

#include "timeline/ClockHours.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace quorvane {
namespace {

constexpr int mostColumns = 5;
constexpr double gutter = 50;  // points
constexpr double smallestBar = 10;

/// A project to draw where there is none. It has the annotation's id, so that its column stays the same each time.
std::shared_ptr<Project> placeholderFor(const ProjectTimeAnnotation& annotation) {
    auto project = std::make_shared<Project>();
    project->id = annotation.id();
    return project;
}

ProjectAnnotation annotationOf(const std::shared_ptr<ProjectTimeAnnotation>& annotation, const Calendar& calendar) {
    auto project = annotation->project();
    const TimeRange hours = clockHours({annotation->startTime(), annotation->endTime()}, calendar);
    return {.id = annotation->id(),
            .startHour = hours.startHour,
            .endHour = hours.endHour,
            .project = project ? std::move(project) : placeholderFor(*annotation),
            .dbAnnotation = annotation};
}

using Annotations = std::vector<ProjectAnnotation>;

/// Behind the last annotation that is joined to the first by overlaps.
Annotations::iterator endOfGroup(Annotations::iterator first, Annotations::iterator last) {
    double groupEnd = first->endHour;
    auto next = std::next(first);
    for (; next != last && groupEnd > next->startHour; ++next)
        groupEnd = std::max(groupEnd, next->endHour);
    return next;
}

}  // namespace

std::vector<PlacedProjectAnnotation>
placeProjectAnnotations(const std::vector<std::shared_ptr<ProjectTimeAnnotation>>& annotations, Date selectedDate,
                        const Calendar& calendar) {
    const auto day = calendar.day(selectedDate);
    Annotations ofDay;
    for (const auto& annotation : annotations)
        if (annotation->startTime() >= day.start && annotation->startTime() < day.end)
            ofDay.push_back(annotationOf(annotation, calendar));
    std::stable_sort(ofDay.begin(), ofDay.end(),
                     [](const auto& a, const auto& b) { return a.startHour < b.startHour; });

    std::vector<PlacedProjectAnnotation> placed;
    placed.reserve(ofDay.size());
    for (auto first = ofDay.begin(); first != ofDay.end();) {
        const auto last = endOfGroup(first, ofDay.end());
        std::set<Uuid> projects;
        std::for_each(first, last, [&](const auto& annotation) { projects.insert(annotation.project->id()); });
        for (; first != last; ++first) {
            const auto column = std::distance(projects.begin(), projects.find(first->project->id()));
            placed.push_back({.annotation = std::move(*first),
                              .columnIndex = std::min(static_cast<int>(column), mostColumns - 1),
                              .totalColumns = std::min(static_cast<int>(projects.size()), mostColumns)});
        }
    }
    return placed;
}

BarFrame barFrame(const PlacedProjectAnnotation& placed, double hourHeight, double totalWidth, double yTop) {
    const double area = totalWidth - gutter;
    const double column = area * 0.5 / std::clamp(placed.totalColumns, 1, mostColumns);
    const double hours = placed.annotation.endHour - placed.annotation.startHour;
    const double height = std::max(hours * hourHeight, smallestBar);
    return {.x = column * 0.5 + area * 0.2 + gutter + column * placed.columnIndex,
            .y = height * 0.5 + yTop,
            .width = column - 4,
            .height = height};
}

}  // namespace quorvane
