#include "timeline/ProjectSelectorState.h"

#include "base/Text.h"

#include <algorithm>

namespace quorvane {

ProjectSelectorState::ProjectSelectorState(TimeRange range, const std::vector<std::shared_ptr<Project>>& projects,
                                           const std::vector<std::shared_ptr<ProjectTimeAnnotation>>& overlapping)
    : timeRange_(range) {
    for (const auto& project : projects) {
        takenNames_.push_back(text::lowercased(project->name()));
        const bool isHidden = std::any_of(overlapping.begin(), overlapping.end(), [&](const auto& annotation) {
            const auto assigned = annotation->project();
            return assigned && assigned->id() == project->id();
        });
        if (isHidden)
            ++hiddenCount_;
        else
            offered_.push_back(project);
    }
}

void ProjectSelectorState::setNewProjectName(std::string name) {
    newProjectName_ = std::move(name);
    nameError_ = errorOf(newProjectName_);
}

std::optional<TextKey> ProjectSelectorState::errorOf(const std::string& name) const {
    if (name.empty()) return {};
    const std::string trimmed = text::trimmedWithNewlines(name);
    if (trimmed.empty()) return TextKey("project_name_empty");
    const bool isTaken =
        std::find(takenNames_.begin(), takenNames_.end(), text::lowercased(trimmed)) != takenNames_.end();
    if (isTaken) return TextKey("project_name_taken");
    return std::nullopt;
}

}  // namespace quorvane
