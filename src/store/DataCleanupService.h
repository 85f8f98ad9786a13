#pragma once

#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/DataCleanupPasses.h"

#include <optional>

namespace quorvane {

/// Removes what automatic tracking leaves behind: records that ran for days, lie in the future, overlap, were never
/// ended, or are fragments. It doesn't spare the record that is being tracked. Nothing throws: a pass that fails prints
/// so, its changes wait in the context for the next save, and the next pass runs as usual. The context may end before
/// the service, which then does nothing; run loop and console outlive it.
class DataCleanupService {
public:
    DataCleanupService(ModelContext& modelContext, platform::RunLoop& runLoop, ConsoleSink& console);
    DataCleanupService(const DataCleanupService&) = delete;
    DataCleanupService& operator=(const DataCleanupService&) = delete;
    ~DataCleanupService();

    /// Cleans up the last 14 days in a later turn of the loop, unless a run is under way.
    void performBackgroundCleanup();

    /// Cleans up everything before it returns, but keeps short records. Not while a run is under way.
    void performSynchronousCleanup();

    /// Ends every open record now, whatever else is under way.
    void endAllActiveRecords();

    /// From the moment a run is accepted until its last pass has returned.
    [[nodiscard]] bool isCleanupRunning() const { return isCleanupRunning_; }

private:
    void runInBackground();
    void run(const DataCleanupPasses::Pass& pass, std::optional<Date> cutoff = std::nullopt);

    WeakHandle<ModelContext> modelContext_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    bool isCleanupRunning_ = false;
    Seconds automaticCleanupLookback_ = 1'209'600s;  ///< 14 days
    WeakSource<DataCleanupService> weak_{*this};     // last: dies first, so that no callback meets half a service
};

}  // namespace quorvane
