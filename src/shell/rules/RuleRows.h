#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <vector>

namespace quorvane {

/// The rules for a list. For assistive technology each is one sentence.
class RuleRows : public QAbstractListModel {
public:
    explicit RuleRows(const Localization& localization, QObject* parent = nullptr);

    /// The same rules in the same order keep the view as it is; others reset it.
    void show(const std::vector<RuleRow>& rows);
    [[nodiscard]] const RuleRow& row(const QModelIndex& index) const;
    /// Invalid if the rule isn't there.
    [[nodiscard]] QModelIndex indexOf(const Rule* rule) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    const Localization& localization_;
    std::vector<RuleRow> rows_;
};

/// Paints a rule of `RuleRows`: its priority, its name, its condition, and chips for what it does.
class RuleRowDelegate : public QStyledItemDelegate {
public:
    /// `offWord` stands beside the name of a disabled rule.
    RuleRowDelegate(QString offWord, QObject* parent);

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QString offWord_;
};

}  // namespace quorvane
