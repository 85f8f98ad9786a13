#include "shell/rules/RuleListModel.h"

#include "shell/look/Typography.h"

#include <algorithm>

namespace quorvane {

RuleListModel::RuleListModel(const Localization& localization, QObject* parent)
    : QAbstractListModel(parent), localization_(localization) {}

void RuleListModel::show(const std::vector<RuleRow>& rows) {
    if (rows == rows_) return;
    if (std::ranges::equal(rows, rows_, {}, &RuleRow::rule, &RuleRow::rule)) {
        rows_ = rows;
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

const RuleRow& RuleListModel::row(const QModelIndex& index) const {
    return rows_[static_cast<std::size_t>(index.row())];
}

QModelIndex RuleListModel::indexOf(const Rule* rule) const {
    const auto found = std::ranges::find(rows_, rule, [](const RuleRow& row) { return row.rule.get(); });
    return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
}

int RuleListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RuleListModel::data(const QModelIndex& index, int role) const {
    switch (role) {
    case Qt::DisplayRole: return qt(row(index).name);
    case Qt::AccessibleTextRole: return qt(row(index).sentence(localization_));
    default: return {};
    }
}

}  // namespace quorvane
