#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "cloud/CloudKitSyncError.h"
#include "cloud/SyncProgress.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RecordContainer.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

class RecordSync;

/// Keeps the user's activity records in the private cloud database: those that were never uploaded go up, and what is
/// there comes down and is merged, the newer one winning. Main thread only; questions to the cloud wait on a worker.
class CloudKitSyncService {
public:
    static constexpr Seconds syncTimeout = 30s;

    /// Called once, on the main thread and in a later turn than the call; with none after a success.
    using Finished = std::function<void(const std::optional<CloudKitSyncError>& error)>;

    /// What it needs outlives it. Without a container the cloud is unavailable.
    CloudKitSyncService(platform::RunLoop& runLoop, ConsoleSink& console, const Localization& localization,
                        std::unique_ptr<platform::RecordContainer> container);
    CloudKitSyncService(const CloudKitSyncService&) = delete;
    CloudKitSyncService& operator=(const CloudKitSyncService&) = delete;
    ~CloudKitSyncService();  ///< Calls off what is under way.

    [[nodiscard]] bool isInitialized() const { return container_ != nullptr; }
    [[nodiscard]] bool isSyncing() const { return sync_ != nullptr; }
    [[nodiscard]] const std::optional<Date>& lastSyncDate() const { return lastSyncDate_; }
    /// The description of the last failure; none while a sync runs and after one that went well.
    [[nodiscard]] const std::optional<std::string>& syncError() const { return syncError_; }
    /// What is behind it, for those who have to mend it; may be empty.
    [[nodiscard]] const std::string& syncErrorCause() const { return syncErrorCause_; }
    /// Of the sync that runs; the last one's otherwise.
    [[nodiscard]] const SyncProgress& progress() const { return progress_; }
    /// Sent when any of these is another.
    Signal<> changed;

    /// Asks for the status of the account; `couldNotDetermine` without a container. `answer` comes once, in a later
    /// turn, with one line that says why the account isn't available. A further question calls the one before off.
    static constexpr Seconds accountTimeout = 30s;
    using AccountAnswer = std::function<void(platform::AccountStatus, const std::string& reason)>;
    void checkCloudKitAccountStatus(AccountAnswer answer);

    /// Uploads, downloads and merges. While a sync runs a second call finishes at once and without an error. The
    /// context outlives the service.
    void syncActivityRecords(ModelContext& context, Finished finished);

    /// The same.
    void performFullSync(ModelContext& context, Finished finished);

private:
    void noteProgress();
    void finish(const std::optional<CloudKitSyncError>& error);
    void answerLater(Finished finished, std::optional<CloudKitSyncError> error);

    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    const Localization& localization_;
    std::unique_ptr<platform::RecordContainer> container_;
    std::shared_ptr<platform::RecordSession> account_;  ///< while its status is asked for
    std::unique_ptr<platform::WorkItem> accountTimeOut_;
    std::unique_ptr<RecordSync> sync_;  ///< while one runs
    std::unique_ptr<platform::WorkItem> timeOut_;
    Finished finished_;
    std::optional<Date> lastSyncDate_;
    std::optional<std::string> syncError_;
    std::string syncErrorCause_;
    SyncProgress progress_;
    WeakSource<CloudKitSyncService> weak_{*this};
};

}  // namespace quorvane
