#pragma once

#include <QStyledItemDelegate>

namespace quorvane {

/// Paints a rule of the list: its priority, its name, its condition, and chips for what it does.
class RuleRowDelegate : public QStyledItemDelegate {
public:
    /// `offWord` stands beside the name of a disabled rule.
    explicit RuleRowDelegate(QString offWord, QObject* parent = nullptr);

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// `index` belongs to a `RuleListModel`.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QString offWord_;
};

}  // namespace quorvane
