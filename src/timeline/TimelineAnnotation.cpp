#include "timeline/TimelineAnnotation.h"

#include "store/ModelContext.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"

#include <algorithm>
#include <unordered_map>

namespace quorvane {
namespace {

using Projects = std::unordered_map<std::int64_t, std::shared_ptr<Project>>;  // by row

void append(std::vector<TimelineAnnotation>& annotations, ModelContext& context, const Projects& projects,
            const Predicate<ProjectTimeAnnotation>& predicate, const std::vector<SortOrder>& sort = {}) {
    context.scan<ProjectTimeAnnotation>(
        {.predicate = predicate, .sort = sort}, {"id", "start_time", "end_time", "project_id"}, [&](const Row& row) {
            TimelineAnnotation& annotation =
                annotations.emplace_back(TimelineAnnotation{.id = ValueTraits<Uuid>::fromSql(row.value(0)),
                                                            .startTime = dateFromMicroseconds(row.integer(1)),
                                                            .endTime = dateFromMicroseconds(row.integer(2)),
                                                            .projectName = {},
                                                            .projectColor = {}});
            if (const auto project = projects.find(row.isNull(3) ? 0 : row.integer(3)); project != projects.end()) {
                annotation.projectName = project->second->name();
                annotation.projectColor = project->second->color();
            }
            return true;
        });
}

}  // namespace

std::vector<TimelineAnnotation> annotationsTouching(ModelContext& context, DateInterval range) {
    Projects projects;
    for (auto& project : context.fetch<Project>())
        projects.emplace(project->objectId(), project);
    const auto start = field(&ProjectTimeAnnotation::startTime);
    const auto end = field(&ProjectTimeAnnotation::endTime);
    std::vector<TimelineAnnotation> annotations;
    append(annotations, context, projects, start >= range.start && start < range.end && end.unindexed() > range.start);
    append(annotations, context, projects, end > range.start && start.unindexed() < range.start,
           {ascending(&ProjectTimeAnnotation::endTime)});
    std::sort(annotations.begin(), annotations.end(), [](const TimelineAnnotation& a, const TimelineAnnotation& b) {
        return a.startTime != b.startTime ? a.startTime > b.startTime : a.id < b.id;
    });
    return annotations;
}

}  // namespace quorvane
