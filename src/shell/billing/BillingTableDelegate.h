#pragma once

#include "shell/billing/BillingTableLayout.h"

#include <QStyledItemDelegate>

namespace quorvane {

/// Draws the cells of the billing table.
class BillingTableDelegate : public QStyledItemDelegate {
public:
    BillingTableDelegate(const BillingTableModel& model, QObject* parent);

    void setLayout(const BillingTableLayout& layout) { layout_ = layout; }
    void setHoveredRow(int row) { hoveredRow_ = row; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    [[nodiscard]] QRect textRectangle(const QStyleOptionViewItem& option, BillingColumn column) const;

    const BillingTableModel& model_;
    BillingTableLayout layout_;
    int hoveredRow_ = -1;
};

}  // namespace quorvane
