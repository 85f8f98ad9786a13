#include "shell/chart/ProjectHours.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace quorvane {
std::vector<ProjectHours> hoursByProject(const std::vector<PlacedProjectAnnotation>& annotations) {
    std::vector<std::pair<Uuid, ProjectHours>> found;
    for (const auto& placed : annotations) {
        const Project& project = *placed.annotation.project;
        auto entry = std::ranges::find(found, project.id(), &std::pair<Uuid, ProjectHours>::first);
        if (entry == found.end())
            entry = found.insert(entry, {project.id(), {project.name(), project.color().value_or(""), 0}});
        const ProjectTimeAnnotation& annotation = *placed.annotation.dbAnnotation;
        entry->second.hours += (annotation.endTime() - annotation.startTime()) / 1h;
    }
    std::vector<ProjectHours> projects;
    projects.reserve(found.size());
    for (auto& [id, project] : found)
        projects.push_back(std::move(project));
    std::ranges::stable_sort(projects, std::greater(), &ProjectHours::hours);
    return projects;
}

}  // namespace quorvane
