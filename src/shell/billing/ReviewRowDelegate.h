#pragma once

#include "shell/state/BillingReviewQueueView.h"

#include <QStyledItemDelegate>

class QAbstractItemView;

namespace quorvane {

class ReviewRowEditor;

/// Paints the rows of the review queue whole: their fields and buttons by the style, as those of an editor.
class ReviewRowDelegate : public QStyledItemDelegate {
public:
    /// `form` is an editor that is never shown.
    ReviewRowDelegate(const BillingReviewQueueView& queue, const Localization& localization, ReviewRowEditor& form,
                      QAbstractItemView& list);

    int hoveredRow = -1;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintWords(QPainter& painter, const BillingReviewRecordRow& row, bool isHovered) const;
    void paintControls(QPainter& painter, const BillingReviewRecordRow& row) const;

    const BillingReviewQueueView& queue_;
    const Localization& localization_;
    ReviewRowEditor& form_;
    QAbstractItemView& list_;
};

}  // namespace quorvane
