#include "shell/state/CreateShareView.h"

#include "base/Text.h"
#include "store/Project.h"

#include <algorithm>
#include <utility>

namespace quorvane {

CreateShareView::CreateShareView(ShareService& shareService, ModelContext& modelContext,
                                 const Localization& localization, std::function<void()> dismiss)
    : shareService_(shareService), modelContext_(modelContext), localization_(localization),
      dismiss_(std::move(dismiss)),
      recentRecords_(modelContext.fetch<ActivityRecord>(
          {.sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)}, .limit = recentLimit})) {}

CreateShareView::Texts CreateShareView::texts() const {
    return {.heading = localization_.text("create_share_title"),
            .title = localization_.text("title"),
            .description = localization_.text("description"),
            .records = localization_.text("select_activity_records"),
            .cancel = localization_.text("cancel"),
            .create = localization_.text("create_share")};
}

std::vector<CreateShareView::Row> CreateShareView::recentRecords() const {
    std::vector<Row> rows;
    rows.reserve(recentRecords_.size());
    for (const auto& record : recentRecords_)
        rows.push_back({.id = record->id(),
                        .name = record->appName().value_or(localization_.text("unknown_app")),
                        .iconName = selectedRecords_.contains(record->id()) ? "check-circle" : ""});
    return rows;
}

void CreateShareView::toggle(const Uuid& record) {
    if (selectedRecords_.erase(record) == 0) selectedRecords_.insert(record);
    changed.send();
}

std::vector<Uuid> CreateShareView::projectIds() const {
    std::vector<Uuid> ids;
    for (const auto& record : recentRecords_) {
        if (!selectedRecords_.contains(record->id())) continue;
        const auto project = record->project();
        if (project != nullptr && std::ranges::find(ids, project->id()) == ids.end()) ids.push_back(project->id());
    }
    return ids;
}

bool CreateShareView::canCreate() const {
    return !isCreating_ && !text::trimmedWithNewlines(title).empty() && !projectIds().empty();
}

void CreateShareView::create() {
    if (!canCreate()) return;
    isCreating_ = true;
    errorMessage_.reset();
    shareService_.createShare({.title = text::trimmedWithNewlines(title), .projectIds = projectIds()}, modelContext_,
                              [weak = weak_.handle()](const auto&, const std::exception_ptr& failure) {
                                  if (auto* const self = weak.get()) self->end(failure == nullptr);
                              });
    changed.send();
}

void CreateShareView::end(bool isPublished) {
    isCreating_ = false;
    if (isPublished) return dismiss_();
    errorMessage_ = shareService_.errorMessage();
    changed.send();
}

void CreateShareView::cancel() {
    dismiss_();
}

}  // namespace quorvane
