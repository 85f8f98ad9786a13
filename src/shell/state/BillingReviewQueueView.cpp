#include "shell/state/BillingReviewQueueView.h"

#include "base/DateText.h"
#include "platform/Clock.h"
#include "store/StoreError.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

std::string durationText(const ActivityRecord& record, const Localization& localization) {
    if (!record.endTime()) return localization.text("in_progress");
    const Seconds lasted = std::max(Seconds{0}, *record.endTime() - record.startTime());
    return fmt::format("{:.2f} h", lasted / 1h);
}

/// None too where the store can't be read; the row shows it as not set then.
std::shared_ptr<Project> projectOf(const ActivityRecord& record) {
    try {
        return record.project();
    } catch (const StoreError&) {
        return nullptr;
    }
}

}  // namespace

std::string label(BillingStatus status, const Localization& localization) {
    switch (status) {
    case BillingStatus::review: return localization.text("billing_status_review");
    case BillingStatus::billable: return localization.text("billing_status_billable");
    case BillingStatus::nonBillable: return localization.text("billing_status_non_billable");
    case BillingStatus::excluded: return localization.text("billing_status_excluded");
    }
    return {};
}

std::optional<std::string> displayTitle(const ActivityRecord& record) {
    for (const auto* text : {&record.windowTitle(), &record.documentPath(), &record.url(), &record.appName()})
        if (*text && !(*text)->empty()) return *text;
    return std::nullopt;
}

BillingReviewQueueView::BillingReviewQueueView(ModelContext& context,
                                               std::vector<std::shared_ptr<ActivityRecord>> records,
                                               std::vector<std::shared_ptr<Project>> projects,
                                               const Localization& localization)
    : localization_(localization), records_(std::move(records)), projects_(std::move(projects)),
      rows_(records_.size()) {
    for (std::size_t i = 0; i < records_.size(); ++i)
        indexes_.emplace(records_[i].get(), i);
    contextChanged_ = context.didChange.subscribe([this](const EntityChange& change) { note(change); });
}

const BillingReviewRecordRow& BillingReviewQueueView::row(std::size_t index) const {
    auto& row = rows_.at(index);
    if (!row) row = rowOf(*records_[index]);
    return *row;
}

std::string BillingReviewQueueView::countCaption() const {
    return localization_.text("review_queue_count_caption", records_.size());
}

void BillingReviewQueueView::setStatus(std::size_t index, BillingStatus status) {
    records_.at(index)->setBillingStatus(status);
}

void BillingReviewQueueView::setProject(std::size_t index, const std::shared_ptr<Project>& project) {
    ActivityRecord& record = *records_.at(index);
    record.project = project;
    record.updatedAt = platform::currentDate();
}

void BillingReviewQueueView::setAll(BillingStatus status) {
    isChangingAll_ = true;  // one message instead of two a record
    for (const auto& record : records_)
        record->setBillingStatus(status);
    isChangingAll_ = false;
    allChanged.send();
}

void BillingReviewQueueView::note(const EntityChange& change) {
    if (const auto found = indexes_.find(change.entity.get()); found != indexes_.end()) {
        rows_[found->second].reset();
        if (!isChangingAll_) rowChanged.send(found->second);
    } else if (dynamic_cast<const Project*>(change.entity.get()) != nullptr) {
        std::fill(rows_.begin(), rows_.end(), std::nullopt);
        allChanged.send();
    }
}

BillingReviewRecordRow BillingReviewQueueView::rowOf(const ActivityRecord& record) const {
    const double confidence = record.confidence();
    return {.title = displayTitle(record).value_or(localization_.text("unknown_activity")),
            .detail = fmt::format("{} - {} - {} {}%", mediumDateShortTime(record.startTime()),
                                  durationText(record, localization_), localization_.text("confidence"),
                                  static_cast<int>(confidence * 100.0)),
            .hasLowConfidence = confidence < lowConfidence,
            .status = record.billingStatusValue(),
            .project = projectOf(record)};
}

}  // namespace quorvane
