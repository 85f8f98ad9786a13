#pragma once

#include "shell/billing/ReviewRowLayout.h"
#include "shell/state/BillingReviewQueueView.h"

#include <QStyledItemDelegate>

class QAbstractItemView;

namespace quorvane {

/// Paints the rows of the review queue whole, with pictures of their fields and buttons.
class ReviewRowDelegate : public QStyledItemDelegate {
public:
    ReviewRowDelegate(const BillingReviewQueueView& queue, const Localization& localization, QAbstractItemView& list);

    int hoveredRow = -1;

    [[nodiscard]] ReviewRowLayout layout() const;  ///< for the list's present width
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintWords(QPainter& painter, const BillingReviewRecordRow& row, const ReviewRowLayout& parts,
                    const QPoint& origin) const;

    const BillingReviewQueueView& queue_;
    const Localization& localization_;
    QAbstractItemView& list_;
    QString billable_;
    QString exclude_;
};

}  // namespace quorvane
