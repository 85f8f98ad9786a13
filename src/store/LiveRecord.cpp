#include "store/LiveRecord.h"

#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <algorithm>

namespace quorvane {

std::optional<Uuid> newestOpenRecord(ModelContext& context) {
    const auto open = context.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::endTime).isNone()});
    const auto newest = std::ranges::max_element(open, {}, [](const auto& record) { return record->updatedAt(); });
    return newest == open.end() ? std::nullopt : std::optional((*newest)->id());
}

}  // namespace quorvane
