#include "shell/state/ShareItemView.h"

#include "store/StoreError.h"

#include <utility>

namespace quorvane {

ShareItemView::ShareItemView(std::shared_ptr<ActivityShare> share, ModelContext& modelContext,
                             ShareService& shareService, platform::RunLoop& runLoop)
    : share_(std::move(share)), modelContext_(modelContext), shareService_(shareService), runLoop_(runLoop) {}

ShareItemView::State ShareItemView::state() const {
    if (!share_->isActive()) return State::stopped;
    const auto& end = share_->expiresAt();
    return end && *end <= runLoop_.now() ? State::expired : State::active;
}

std::string ShareItemView::stopWarning(const Localization& localization) {
    return localization.text("stop_sharing_alert_message");
}

void ShareItemView::stop() {
    if (isDeleted_ || !share_->isActive()) return;
    shareService_.stopShare(share_, modelContext_, [](const std::exception_ptr&) {});
}

ShareItemView::Confirmation ShareItemView::deleteConfirmation(const Localization& localization) {
    return {.title = localization.text("confirm_delete"),
            .message = localization.text("delete_share_message"),
            .cancel = localization.text("cancel"),
            .confirm = localization.text("delete")};
}

void ShareItemView::askToDelete() {
    if (isDeleted_) return;
    showingDeleteConfirmation_ = true;
    changed.send();
}

void ShareItemView::cancelDeleting() {
    showingDeleteConfirmation_ = false;
    changed.send();
}

void ShareItemView::confirmDelete() {
    if (!std::exchange(showingDeleteConfirmation_, false)) return;
    errorMessage_.reset();
    try {
        modelContext_.remove(share_);
        modelContext_.save();
        isDeleted_ = true;
    } catch (const StoreError& error) {
        errorMessage_ = error.what();
    }
    changed.send();
}

}  // namespace quorvane
