#pragma once

#include "base/Iso8601.h"
#include "timeline/TimelineAnnotation.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <optional>
#include <vector>

namespace quorvane::cli {

/// What the week and the month are made from.
struct OverviewInput {
    std::vector<TimelineRecordSnapshot> records;  ///< newest first, among equals the smaller id first
    std::vector<TimelineAnnotation> annotations;  ///< likewise
};

/// All that shares a moment with the range. Throws `StoreError`.
[[nodiscard]] OverviewInput readOverview(ModelContext& store, DateInterval range);

/// The day that was asked for; today where none was.
[[nodiscard]] Date chosenDate(const std::optional<CivilDate>& day);

}  // namespace quorvane::cli
