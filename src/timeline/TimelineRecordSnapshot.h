#pragma once

#include "base/Date.h"
#include "base/Uuid.h"

#include <optional>
#include <stop_token>
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

    /// The name of the application, `StoredNames::unknownApp` where there is none.
    [[nodiscard]] std::string displayName() const;

    /// Is it the window in which people log in? It is on no chart.
    [[nodiscard]] bool isLoginWindow() const;
};

/// How much of a record is read. The overviews need neither titles nor documents, nor what else follows the
/// application.
enum class RecordDetail { overview, whole };

[[nodiscard]] TimelineRecordSnapshot snapshotOf(const ActivityRecord& record,
                                                RecordDetail detail = RecordDetail::whole);

/// Does a record begin in the range, or earlier and reach into it? An open one reaches everywhere.
[[nodiscard]] bool touches(const TimelineRecordSnapshot& record, DateInterval range);

/// The records that begin from `start` to before `end`, straight from the store, oldest first, among equals the smaller
/// id first. Throws `StoreError`.
[[nodiscard]] std::vector<TimelineRecordSnapshot> recordsStartingIn(ModelContext& context, DateInterval range);

/// Those that touch the range, in the same order. Unsaved changes count. What it costs follows the range, wherever in
/// the history that lies. Nothing of use once `stop` was requested.
[[nodiscard]] std::vector<TimelineRecordSnapshot> recordsTouching(ModelContext& context, DateInterval range,
                                                                  RecordDetail detail = RecordDetail::whole,
                                                                  const std::stop_token& stop = {});

}  // namespace quorvane
