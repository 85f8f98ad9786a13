#pragma once

#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What the hygiene services look at of a record. They go over many and change few, so they ask for the object last.
struct RecordSpan {
    std::int64_t objectId = 0;  ///< for `RecordSpans::record`; until the context is saved
    Date start;
    std::optional<Date> end;  ///< none while open
    Uuid id;
    std::string bundleId{};    ///< only where the query asks for the content; empty for none
    std::size_t likeness = 0;  ///< the same: equal for records that agree, and hardly ever for others

    /// When it ended, or `now` while it is open.
    [[nodiscard]] Date endOr(Date now) const { return end.value_or(now); }
    /// Below zero for a record that ends before it starts, or that is open and starts in the future.
    [[nodiscard]] Seconds duration(Date now) const { return endOr(now) - start; }
};

}  // namespace quorvane

/// Reads records in the order of their start without making objects of them. Among equals the identifier decides, so
/// that a store gives the same results after it was dumped and loaded. Unsaved changes count. Memory follows the limit
/// and not the history. All of it throws `StoreError`.
namespace quorvane::RecordSpans {

struct Query {
    Predicate<ActivityRecord> predicate{};
    std::optional<Date> from{};  ///< only records that start then or later
    bool withContent = false;
};

/// Records that a walk reads at once: a few milliseconds' worth.
inline constexpr std::size_t sliceSize = 20'000;

/// The order of the walks, for fetches.
[[nodiscard]] std::vector<SortOrder> order();

/// The first records of the query, at most `limit` (> 0). If there are more, some that start with the last one may be
/// missing.
[[nodiscard]] std::vector<RecordSpan> read(ModelContext& context, const Query& query, std::size_t limit);

/// Visits all records of the query, and reads `slice` of them at once. `visit` may ask for objects but must not change
/// any.
void forEach(ModelContext& context, Query query, const std::function<void(const RecordSpan&)>& visit,
             std::size_t slice = sliceSize);

/// The object; none if another program has just removed it.
[[nodiscard]] std::shared_ptr<ActivityRecord> record(ModelContext& context, const RecordSpan& span);

[[nodiscard]] RecordSpan spanOf(const ActivityRecord& record);

/// Do both tell of one piece of work: application, title, document, address, project, category, tags, billing status?
[[nodiscard]] bool agree(const ActivityRecord& a, const ActivityRecord& b);

}  // namespace quorvane::RecordSpans
