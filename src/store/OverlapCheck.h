#pragma once

#include "base/Signal.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/OverlapGroups.h"

#include <memory>
#include <unordered_set>
#include <vector>

namespace quorvane {

/// Handles the groups one after the other and saves once. Nothing throws.
void resolveOverlaps(ModelContext& context, ConsoleSink& console, const std::vector<OverlapGroup>& groups, Date now);

/// One check over all records. It reads the history slice by slice, each in a turn of the loop of its own, keeps the
/// members of groups alone, and resolves them in the end. Between the turns it is owned by the loop.
class OverlapCheck : public std::enable_shared_from_this<OverlapCheck> {
public:
    OverlapCheck(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console, std::size_t sliceSize);

    /// Prints the first line and reads the first slice, and all that follows if there is no second one.
    void begin();

private:
    void continueReading();
    void readSlice(ModelContext& context);
    void keepGroups(ModelContext& context, const std::vector<RecordSpan>& spans);
    void removeNewcomers(std::vector<RecordSpan>& spans) const;
    void conclude(ModelContext& context);

    WeakHandle<ModelContext> context_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    std::size_t sliceSize_;
    std::size_t limit_;
    std::optional<Date> from_;
    std::vector<OverlapGroup> groups_;
    Subscription insertions_;                                ///< from the first slice on
    std::unordered_set<std::shared_ptr<Entity>> newcomers_;  ///< inserted since then
};

}  // namespace quorvane
