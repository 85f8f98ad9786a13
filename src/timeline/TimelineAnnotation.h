#pragma once

#include "base/Date.h"
#include "base/Uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class ModelContext;

/// A value copy of a stretch that was given to a project, for charts that only show it.
struct TimelineAnnotation {
    Uuid id;
    Date startTime;
    Date endTime;
    std::optional<std::string> projectName;   ///< none without a project
    std::optional<std::string> projectColor;  ///< the name of its tone; a project may have none
    friend bool operator==(const TimelineAnnotation&, const TimelineAnnotation&) = default;
};

/// The annotations that share a moment with the range, straight from the store, newest first, among equals the smaller
/// id first. Throws `StoreError`.
[[nodiscard]] std::vector<TimelineAnnotation> annotationsTouching(ModelContext& context, DateInterval range);

}  // namespace quorvane
