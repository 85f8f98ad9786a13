#pragma once

#include "base/Date.h"
#include "base/Uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class ActivityRecord;
class ModelContext;

/// A value copy of a record, for work off the main thread and for reading many.
struct TimelineRecordSnapshot {
    Uuid id;
    Date startTime;
    std::optional<Date> endTime;  ///< none while open
    std::optional<std::string> bundleId;
    std::optional<std::string> appName;
    std::optional<std::string> windowTitle;
    std::optional<std::string> documentPath;
    std::optional<std::string> url;
    std::optional<std::string> category;  ///< as stored
    std::string tags;                     ///< joined by ","
    friend bool operator==(const TimelineRecordSnapshot&, const TimelineRecordSnapshot&) = default;

    /// The name of the application, "未知应用" where there is none.
    [[nodiscard]] std::string displayName() const;

    /// Is it the window in which people log in? It is on no chart.
    [[nodiscard]] bool isLoginWindow() const;
};

[[nodiscard]] TimelineRecordSnapshot snapshotOf(const ActivityRecord& record);

/// The records that begin from `start` to before `end`, straight from the store, oldest first, among equals the smaller
/// id first. Throws `StoreError`.
[[nodiscard]] std::vector<TimelineRecordSnapshot> recordsStartingIn(ModelContext& context, DateInterval range);

/// Those, and the ones that begin earlier and reach into the range; open ones reach everywhere.
[[nodiscard]] std::vector<TimelineRecordSnapshot> recordsTouching(ModelContext& context, DateInterval range);

}  // namespace quorvane
