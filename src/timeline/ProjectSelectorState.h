#pragma once

#include "l10n/Localization.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "timeline/DayTimelineGeometry.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The panel in which a range of a day is given to a project: which projects it offers, and what it says of the name of
/// a new one.
class ProjectSelectorState {
public:
    /// `overlapping`: the annotations that share time with the range; their projects aren't offered.
    ProjectSelectorState(TimeRange range, const std::vector<std::shared_ptr<Project>>& projects,
                         const std::vector<std::shared_ptr<ProjectTimeAnnotation>>& overlapping);

    [[nodiscard]] const TimeRange& timeRange() const { return timeRange_; }
    [[nodiscard]] const std::vector<std::shared_ptr<Project>>& projects() const { return offered_; }
    [[nodiscard]] std::size_t hiddenCount() const { return hiddenCount_; }

    [[nodiscard]] const std::string& newProjectName() const { return newProjectName_; }
    /// Validates on each edit.
    void setNewProjectName(std::string name);
    /// What speaks against the name.
    [[nodiscard]] std::optional<TextKey> nameError() const { return nameError_; }
    /// Is there a name, and nothing against it?
    [[nodiscard]] bool canCreate() const { return !newProjectName_.empty() && !nameError_; }

    std::string selectedColor = "mint";  ///< the name of a tone

private:
    [[nodiscard]] std::optional<TextKey> errorOf(const std::string& name) const;

    TimeRange timeRange_;
    std::vector<std::shared_ptr<Project>> offered_;
    std::vector<std::string> takenNames_;  ///< lower case, of all projects
    std::size_t hiddenCount_ = 0;
    std::string newProjectName_;
    std::optional<TextKey> nameError_;
};

}  // namespace quorvane
