#pragma once

#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "timeline/DayTimelineGeometry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// The panel in which a range of a day is given to a project: which projects it offers, and what it says of the name of
/// a new one.
class ProjectSelectorState {
public:
    static constexpr std::string_view namePlaceholder = "输入项目名称或选择现有项目";
    static constexpr std::string_view colorTitle = "选择项目颜色";

    /// `overlapping`: the annotations that share time with the range; their projects aren't offered.
    ProjectSelectorState(TimeRange range, const std::vector<std::shared_ptr<Project>>& projects,
                         const std::vector<std::shared_ptr<ProjectTimeAnnotation>>& overlapping);

    [[nodiscard]] const TimeRange& timeRange() const { return timeRange_; }
    [[nodiscard]] const std::vector<std::shared_ptr<Project>>& projects() const { return offered_; }
    [[nodiscard]] std::size_t hiddenCount() const { return hiddenCount_; }

    [[nodiscard]] const std::string& newProjectName() const { return newProjectName_; }
    /// Validates on each edit.
    void setNewProjectName(std::string name);
    [[nodiscard]] const std::string& nameError() const { return nameError_; }  ///< empty for none
    /// Is there a name, and nothing against it?
    [[nodiscard]] bool canCreate() const { return !newProjectName_.empty() && nameError_.empty(); }

    std::string selectedColor = "mint";  ///< the name of a tone

private:
    [[nodiscard]] std::string errorOf(const std::string& name) const;

    TimeRange timeRange_;
    std::vector<std::shared_ptr<Project>> offered_;
    std::vector<std::string> takenNames_;  ///< lower case, of all projects
    std::size_t hiddenCount_ = 0;
    std::string newProjectName_;
    std::string nameError_;
};

}  // namespace quorvane
