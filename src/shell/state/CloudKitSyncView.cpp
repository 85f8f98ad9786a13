#include "shell/state/CloudKitSyncView.h"

#include "base/Calendar.h"
#include "base/DateText.h"

#include <utility>

namespace quorvane {
namespace {

using platform::AccountStatus;

/// "today, 16:32"
std::string dateText(Date date, Date now, const Localization& localization) {
    const Calendar calendar = Calendar::current();
    const std::string time = localDateText(date, "HH:mm");
    if (calendar.isSameDay(date, now)) return localization.text("ui_sync_today", time);
    if (calendar.isSameDay(date, calendar.addingDays(-1, now))) return localization.text("ui_sync_yesterday", time);
    return mediumDateShortTime(date);
}

std::string unavailableText(const Localization& localization) {
    return CloudKitSyncError(CloudKitSyncError::Code::notAvailable).text(localization);
}

}  // namespace

CloudKitSyncView::CloudKitSyncView(CloudKitSyncService& cloudKitSyncService, ModelContext& modelContext,
                                   platform::RunLoop& runLoop, const Localization& localization)
    : cloudKitSyncService_(cloudKitSyncService), modelContext_(modelContext), runLoop_(runLoop),
      localization_(localization), wasSyncing_(cloudKitSyncService.isSyncing()),
      serviceChanged_(cloudKitSyncService.changed.subscribe([this] { followService(); })) {}

void CloudKitSyncView::appear() {
    askForStatus(std::nullopt);
}

void CloudKitSyncView::syncActivityRecords() {
    if (canSync()) askForStatus(Action::syncActivityRecords);
}

void CloudKitSyncView::performFullSync() {
    if (canSync()) askForStatus(Action::fullSync);
}

void CloudKitSyncView::askForStatus(std::optional<Action> action) {
    if (!cloudKitSyncService_.isInitialized()) return;
    action_ = action;
    cloudKitSyncService_.checkCloudKitAccountStatus(
        [weak = weak_.handle(), question = ++questions_, action](AccountStatus status, const std::string& reason) {
            auto* const self = weak.get();
            if (self != nullptr && question == self->questions_) self->note(status, reason, action);
        });
    changed.send();
}

void CloudKitSyncView::note(AccountStatus status, const std::string& reason, std::optional<Action> action) {
    status_ = status;
    statusReason_ = reason;
    if (action && status == AccountStatus::available) return begin(*action);
    action_.reset();
    if (action) return alert(unavailableText(localization_), false);
    changed.send();
}

void CloudKitSyncView::begin(Action action) {
    if (cloudKitSyncService_.isSyncing()) {
        // Another one began meanwhile; how it ends is told in its place.
        action_.reset();
        return changed.send();
    }
    const auto finished = [weak = weak_.handle(), action](const std::optional<CloudKitSyncError>& error) {
        if (auto* const self = weak.get()) self->end(action, error);
    };
    switch (action) {
    case Action::syncActivityRecords: return cloudKitSyncService_.syncActivityRecords(modelContext_, finished);
    case Action::fullSync: return cloudKitSyncService_.performFullSync(modelContext_, finished);
    }
}

void CloudKitSyncView::end(Action action, const std::optional<CloudKitSyncError>& error) {
    action_.reset();
    const bool isFull = action == Action::fullSync;
    const Localization& l = localization_;
    if (!error) return alert(isFull ? l.text("sync_full_done") : l.text("sync_records_done"), true);
    const std::string reason = error->text(l);
    alert(isFull ? l.text("sync_full_failed", reason) : l.text("sync_records_failed", reason), false);
}

void CloudKitSyncView::followService() {
    const bool hasEnded = std::exchange(wasSyncing_, cloudKitSyncService_.isSyncing()) && !wasSyncing_;
    // It was begun before the screen was opened again.
    if (hasEnded && !action_ && !cloudKitSyncService_.syncError()) return alert(localization_.text("sync_done"), true);
    changed.send();
}

void CloudKitSyncView::alert(std::string message, bool hasSucceeded) {
    syncMessage_ = std::move(message);
    hasSucceeded_ = hasSucceeded;
    showingSyncAlert_ = true;
    changed.send();
}

bool CloudKitSyncView::isSyncing() const {
    return action_.has_value() || cloudKitSyncService_.isSyncing();
}

CloudKitSyncView::Availability CloudKitSyncView::availability() const {
    if (!cloudKitSyncService_.isInitialized()) return Availability::unavailable;
    if (!status_) return Availability::checking;
    return *status_ == AccountStatus::available ? Availability::available : Availability::unavailable;
}

std::string CloudKitSyncView::availabilityText() const {
    switch (availability()) {
    case Availability::checking: return localization_.text("ui_sync_checking");
    case Availability::available: return localization_.text("ui_sync_available");
    case Availability::unavailable: return localization_.text("ui_sync_unavailable");
    }
    return {};
}

std::string CloudKitSyncView::statusText() const {
    if (isSyncing()) {
        const SyncProgress progress =
            cloudKitSyncService_.isSyncing() ? cloudKitSyncService_.progress() : SyncProgress{};
        std::string running = localization_.text("ui_sync_running");
        if (progress.downloaded > 0)
            return running + " " + localization_.text("ui_sync_downloaded", progress.downloaded);
        if (progress.toUpload == 0) return running;
        return running + " " + localization_.text("ui_sync_uploaded", progress.uploaded, progress.toUpload);
    }
    const auto& date = cloudKitSyncService_.lastSyncDate();
    if (!date) return localization_.text("ui_sync_never");
    return localization_.text("ui_sync_last", dateText(*date, runLoop_.now(), localization_));
}

std::optional<CloudKitSyncView::Problem> CloudKitSyncView::problem() const {
    if (!cloudKitSyncService_.isInitialized())
        return Problem{.text = localization_.text("ui_sync_not_set_up"),
                       .cause = localization_.text("ui_sync_set_up_hint"),
                       .isFailure = false};
    if (isSyncing()) return std::nullopt;
    if (availability() == Availability::unavailable)
        return Problem{.text = unavailableText(localization_), .cause = statusReason_};
    const auto& error = cloudKitSyncService_.syncError();
    if (error) return Problem{.text = *error, .cause = cloudKitSyncService_.syncErrorCause()};
    const std::size_t refused = cloudKitSyncService_.progress().refused;
    if (refused > 0) return Problem{.text = localization_.text("ui_sync_refused", refused)};
    return std::nullopt;
}

}  // namespace quorvane
