#pragma once

#include "base/RawValue.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"
#include "store/TrashedRecord.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

/// Where records go that a pass takes out of the day: nothing that automatic cleaning takes is gone at once. What is
/// done here is saved with the context, so that a record leaves the day and reaches the trash in one transaction.
namespace quorvane::RecordTrash {

/// Which pass took it.
enum class Pass { tooLong, inTheFuture, overlap, overlapGroup, fragment };

/// So long it stays.
inline constexpr Seconds lifetime = 30 * 24h;

/// Takes the record out of the day.
void take(ModelContext& context, const std::shared_ptr<ActivityRecord>& record, Pass pass, Date now);

/// Lets an ended record end earlier; what it loses goes to the trash as a record like it with an id of its own.
void cutEnd(ModelContext& context, ActivityRecord& record, Date end, Pass pass, Date now);

/// Did somebody bring the record back?
[[nodiscard]] bool wasRestored(ModelContext& context, const Uuid& record);

/// What can be brought back, newest first.
[[nodiscard]] std::vector<std::shared_ptr<TrashedRecord>> content(ModelContext& context);

/// The record as it was, free. Its project is none if that is gone.
[[nodiscard]] std::shared_ptr<ActivityRecord> recordOf(ModelContext& context, const TrashedRecord& trashed);

/// Why a record can't come back.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Puts the record back as it was; no pass touches it again. Throws `Error` if it isn't in the trash or is back
/// already.
std::shared_ptr<ActivityRecord> restore(ModelContext& context, const Uuid& record, Date now);

/// Removes for good what can be brought back, of before then alone if that is given; returns how much it was.
std::size_t empty(ModelContext& context, std::optional<Date> before = std::nullopt);

}  // namespace quorvane::RecordTrash

namespace quorvane {

template <>
struct RawValues<RecordTrash::Pass> {
    using Pass = RecordTrash::Pass;
    static constexpr RawValueTable<Pass, 5> table{{{Pass::tooLong, "tooLong"},
                                                   {Pass::inTheFuture, "inTheFuture"},
                                                   {Pass::overlap, "overlap"},
                                                   {Pass::overlapGroup, "overlapGroup"},
                                                   {Pass::fragment, "fragment"}}};
};

}  // namespace quorvane
