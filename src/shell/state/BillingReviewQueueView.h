#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"
#include "store/Project.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvane {

/// What the user sees of a status.
[[nodiscard]] std::string label(BillingStatus status, const Localization& localization);

/// The first of window title, document, URL and application that isn't empty; none if all are.
[[nodiscard]] std::optional<std::string> displayTitle(const ActivityRecord& record);

/// One record of the review queue in words.
struct BillingReviewRecordRow {
    std::string title;
    std::string detail;  ///< "Mar 12, 2026, 2:03 PM - 0.72 h - Confidence 62%"
    bool hasLowConfidence = false;
    BillingStatus status = BillingStatus::review;
    std::shared_ptr<Project> project;  ///< may be none
};

/// The records that somebody has to look at, as they were when the queue was opened: a record that is settled stays,
/// with its new status. Changes go straight into the store's objects. Main thread only; the context outlives it.
class BillingReviewQueueView {
public:
    static constexpr double lowConfidence = 0.9;  ///< below it a record is doubtful
    static constexpr std::array<BillingStatus, 4> statuses{BillingStatus::review, BillingStatus::billable,
                                                           BillingStatus::nonBillable, BillingStatus::excluded};

    /// `records` in the order in which they are shown; `projects` are those to choose from.
    BillingReviewQueueView(ModelContext& context, std::vector<std::shared_ptr<ActivityRecord>> records,
                           std::vector<std::shared_ptr<Project>> projects, const Localization& localization);
    BillingReviewQueueView(const BillingReviewQueueView&) = delete;
    BillingReviewQueueView& operator=(const BillingReviewQueueView&) = delete;

    [[nodiscard]] const std::vector<std::shared_ptr<ActivityRecord>>& records() const { return records_; }
    [[nodiscard]] const std::vector<std::shared_ptr<Project>>& projects() const { return projects_; }
    [[nodiscard]] const BillingReviewRecordRow& row(std::size_t index) const;
    [[nodiscard]] std::string countCaption() const;

    void setStatus(std::size_t index, BillingStatus status);
    /// None for no project. The status stays.
    void setProject(std::size_t index, const std::shared_ptr<Project>& project);
    void markAllBillable() { setAll(BillingStatus::billable); }
    void excludeAll() { setAll(BillingStatus::excluded); }

    Signal<std::size_t> rowChanged;
    /// Any of the rows may have changed, and the names of the projects.
    Signal<> allChanged;

private:
    void setAll(BillingStatus status);
    void note(const EntityChange& change);
    [[nodiscard]] BillingReviewRecordRow rowOf(const ActivityRecord& record) const;

    const Localization& localization_;
    std::vector<std::shared_ptr<ActivityRecord>> records_;
    std::vector<std::shared_ptr<Project>> projects_;
    std::unordered_map<const Entity*, std::size_t> indexes_;
    mutable std::vector<std::optional<BillingReviewRecordRow>> rows_;  ///< made when they are first asked for
    bool isChangingAll_ = false;
    Subscription contextChanged_;
};

}  // namespace quorvane
