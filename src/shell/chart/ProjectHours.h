#pragma once

#include "timeline/AnnotationLayout.h"

#include <string>
#include <vector>

namespace quorvane {

/// What a day gave to a project.
struct ProjectHours {
    std::string name;
    std::string color;  ///< the name of a tone; may be empty
    double hours = 0;
    friend bool operator==(const ProjectHours&, const ProjectHours&) = default;
};

/// The hours of each project, most first, among equals by their first annotation.
[[nodiscard]] std::vector<ProjectHours> hoursByProject(const std::vector<PlacedProjectAnnotation>& annotations);

}  // namespace quorvane
