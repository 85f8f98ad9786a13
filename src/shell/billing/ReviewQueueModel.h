#pragma once

#include "shell/state/BillingReviewQueueView.h"

#include <QAbstractListModel>

namespace quorvane {

/// The rows of the review queue for a list: their titles, and what assistive technology reads of them.
class ReviewQueueModel : public QAbstractListModel {
public:
    ReviewQueueModel(BillingReviewQueueView& queue, const Localization& localization, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] QString description(const BillingReviewRecordRow& row) const;

    BillingReviewQueueView& queue_;
    const Localization& localization_;
};

}  // namespace quorvane
