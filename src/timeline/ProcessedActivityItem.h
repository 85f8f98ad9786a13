#pragma once

#include "base/Color.h"
#include "base/Uuid.h"

#include <optional>
#include <string>

namespace quorvane {

/// A block of the day after merging and placing. Hours count from local midnight.
struct TimelineProcessedSnapshot {
    Uuid id;               ///< of the first record that went into it
    double startHour = 0;  ///< may have been pushed behind the true start, even past 24
    double duration = 0;   ///< hours
    std::optional<std::string> bundleId;
    std::string appName;
    std::optional<std::string> windowTitle;
    std::optional<std::string> documentPath;
    std::optional<std::string> url;
    std::optional<std::string> category;
    std::string tags;
    friend bool operator==(const TimelineProcessedSnapshot&, const TimelineProcessedSnapshot&) = default;
};

/// A block as the day chart draws it. Positions are points from the top.
struct ProcessedActivityItem {
    Uuid id;
    double startHour = 0;
    double duration = 0;  ///< hours
    std::optional<std::string> bundleId;
    std::string appName;
    std::optional<std::string> windowTitle;
    std::optional<std::string> documentPath;
    std::optional<std::string> url;
    Color color;
    std::optional<std::string> category;
    std::string tags;
    double yTop = 0;
    double yBottom = 0;
    bool shouldShowName = false;

    [[nodiscard]] double endHour() const { return startHour + duration; }
    friend bool operator==(const ProcessedActivityItem&, const ProcessedActivityItem&) = default;
};

}  // namespace quorvane
