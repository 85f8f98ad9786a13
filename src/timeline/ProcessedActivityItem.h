#pragma once

#include "base/Color.h"
#include "base/Date.h"
#include "base/Uuid.h"
#include "timeline/Lanes.h"

#include <optional>
#include <string>

namespace quorvane {

/// A block of the day after merging and placing. Hours are those on the clock, from midnight.
struct TimelineProcessedSnapshot {
    Uuid id;               ///< of the first record that went into it
    DateInterval stretch;  ///< from the start of its first record to its last end
    double startHour = 0;
    double endHour = 0;   ///< past 24 where it goes on over midnight
    double duration = 0;  ///< hours that it lasted
    Lane lane;
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
    DateInterval stretch;
    double startHour = 0;
    double endHour = 0;
    double duration = 0;
    Lane lane;
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
    friend bool operator==(const ProcessedActivityItem&, const ProcessedActivityItem&) = default;
};

}  // namespace quorvane
