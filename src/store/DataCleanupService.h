#pragma once

#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/DataCleanupPasses.h"
#include "store/LiveRecord.h"

#include <optional>
#include <span>

namespace quorvane {

/// Mends what automatic tracking leaves behind: records that were never ended, ran for days, lie in the future,
/// overlap, or are fragments. What it takes out of the day is in the trash. The record that is being tracked is spared,
/// and so is what the user has decided about (`Scope::mayTouch`). A run repeats its passes until they find nothing
/// more. Nothing throws: a pass that fails prints so, its changes wait in the context for the next save, and the next
/// pass runs as usual. The context may end before the service, which then does nothing; run loop and console outlive
/// it.
class DataCleanupService {
public:
    DataCleanupService(ModelContext& modelContext, platform::RunLoop& runLoop, ConsoleSink& console,
                       LiveRecord liveRecord = {});
    DataCleanupService(const DataCleanupService&) = delete;
    DataCleanupService& operator=(const DataCleanupService&) = delete;
    ~DataCleanupService();

    /// Cleans up the last 14 days, and empties the trash of what is older than it keeps, in a later turn of the loop,
    /// unless a run is under way.
    void performBackgroundCleanup();

    /// Cleans up everything before it returns, but keeps short records. Not while a run is under way.
    void performSynchronousCleanup();

    /// Ends what was left open, whatever else is under way.
    void endAllActiveRecords();

    /// From the moment a run is accepted until its last pass has returned.
    [[nodiscard]] bool isCleanupRunning() const { return isCleanupRunning_; }

private:
    void runInBackground();
    bool run(const DataCleanupPasses::Pass& pass, std::optional<Date> cutoff = std::nullopt);
    void runToTheEnd(std::span<const DataCleanupPasses::Pass> passes, std::optional<Date> cutoff = std::nullopt);

    WeakHandle<ModelContext> modelContext_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    LiveRecord liveRecord_;
    bool isCleanupRunning_ = false;
    Seconds automaticCleanupLookback_ = 1'209'600s;  ///< 14 days
    WeakSource<DataCleanupService> weak_{*this};     // last: dies first, so that no callback meets half a service
};

}  // namespace quorvane
