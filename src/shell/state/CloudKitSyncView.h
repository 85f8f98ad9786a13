#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "cloud/CloudKitSyncService.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quorvane {

/// The sync screen without its pixels: how the cloud stands, when records were last synced, and two ways to sync them.
/// A sync goes on when the screen goes. What it is made on outlives it. Main thread only.
class CloudKitSyncView {
public:
    /// Stands as it is in every language.
    static constexpr const char* title = "CloudKit";

    CloudKitSyncView(CloudKitSyncService& cloudKitSyncService, ModelContext& modelContext, platform::RunLoop& runLoop,
                     const Localization& localization);
    CloudKitSyncView(const CloudKitSyncView&) = delete;
    CloudKitSyncView& operator=(const CloudKitSyncView&) = delete;

    /// The screen opens: asks for the account's status.
    void appear();
    // Both ask for the account's status first. Nothing happens where `canSync` is false.
    void syncActivityRecords();
    void performFullSync();

    /// A sync runs, whoever began it, or is about to.
    [[nodiscard]] bool isSyncing() const;
    [[nodiscard]] bool canSync() const { return cloudKitSyncService_.isInitialized() && !isSyncing(); }

    enum class Availability { checking, available, unavailable };
    [[nodiscard]] Availability availability() const;
    [[nodiscard]] std::string availabilityText() const;

    /// Of the icon set.
    [[nodiscard]] const char* symbol() const { return isSyncing() ? "refresh" : "cloud"; }
    /// How far the sync is, or when the last one was.
    [[nodiscard]] std::string statusText() const;

    /// What stands in the way.
    struct Problem {
        std::string text{};
        std::string cause{};  ///< for those who mend it; may be empty
        bool isFailure = true;
        friend bool operator==(const Problem&, const Problem&) = default;
    };
    /// None where all is well, and while a sync runs.
    [[nodiscard]] std::optional<Problem> problem() const;

    /// An alert with `syncMessage` is due.
    [[nodiscard]] bool showingSyncAlert() const { return showingSyncAlert_; }
    [[nodiscard]] const std::string& syncMessage() const { return syncMessage_; }
    /// Does the message tell of a success?
    [[nodiscard]] bool hasSucceeded() const { return hasSucceeded_; }
    void dismissSyncAlert() { showingSyncAlert_ = false; }

    /// Sent when any of this is another.
    Signal<> changed;

private:
    enum class Action { syncActivityRecords, fullSync };

    void askForStatus(std::optional<Action> action);
    void note(platform::AccountStatus status, const std::string& reason, std::optional<Action> action);
    void begin(Action action);
    void end(Action action, const std::optional<CloudKitSyncError>& error);
    void followService();
    void alert(std::string message, bool hasSucceeded);

    CloudKitSyncService& cloudKitSyncService_;
    ModelContext& modelContext_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    std::optional<platform::AccountStatus> status_;  ///< none until the first answer
    std::string statusReason_;
    std::size_t questions_ = 0;     ///< only the answer to the last one counts
    std::optional<Action> action_;  ///< the one that was begun here, from its question on
    bool wasSyncing_;
    bool showingSyncAlert_ = false;
    bool hasSucceeded_ = false;
    std::string syncMessage_;
    Subscription serviceChanged_;
    WeakSource<CloudKitSyncView> weak_{*this};
};

}  // namespace quorvane
