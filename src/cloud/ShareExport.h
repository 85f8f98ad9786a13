#pragma once

#include "base/Json.h"
#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"

#include <memory>
#include <vector>

namespace quorvane {

/// What a reader of the share gets to see: `shareInfo`, and under `activities` the records in their order, each with
/// `id` and the keys of its cloud form. A share of projects takes only their records. Instants are in UTC to the second
/// ("2026-03-04T15:00:00Z"), what is absent is null. Throws `StoreError` if a record's project can't be read.
[[nodiscard]] Json shareDocument(const ActivityShare& share,
                                 const std::vector<std::shared_ptr<ActivityRecord>>& records);

}  // namespace quorvane
