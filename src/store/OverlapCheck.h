#pragma once

#include "base/Signal.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/DataCleanupPasses.h"
#include "store/LiveRecord.h"
#include "store/OverlapGroups.h"

#include <memory>
#include <unordered_set>
#include <vector>

namespace quorvane {

/// Handles the groups one after the other and saves once; a failure to do so is printed. Says whether records went, and
/// with them perhaps what stood between two others. Throws `StoreError` for what can't be read.
bool resolveOverlaps(const DataCleanupPasses::Scope& scope, const std::vector<OverlapGroup>& groups);

/// One check over all records. It reads the history slice by slice, each in a turn of the loop of its own, keeps the
/// members of groups alone, resolves them in the end, and begins again if records went. Between the turns it is owned
/// by the loop.
class OverlapCheck : public std::enable_shared_from_this<OverlapCheck> {
public:
    OverlapCheck(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console, std::size_t sliceSize,
                 LiveRecord liveRecord);

    /// Prints the first line and reads the first slice, and all that follows if there is no second one.
    void begin();

private:
    [[nodiscard]] DataCleanupPasses::Scope scope(ModelContext& context) const;
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
    LiveRecord liveRecord_;
    bool isRepeated_ = false;
    std::optional<Date> from_;
    std::vector<OverlapGroup> groups_;
    Subscription insertions_;                                ///< from the first slice on
    std::unordered_set<std::shared_ptr<Entity>> newcomers_;  ///< inserted since then
};

}  // namespace quorvane
