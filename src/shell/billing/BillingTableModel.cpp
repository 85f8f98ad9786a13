#include "shell/billing/BillingTableModel.h"

#include "shell/look/Typography.h"

namespace quorvane {
namespace {

const std::string& cell(const BillingTableRow& row, BillingColumn column) {
    switch (column) {
    case BillingColumn::project: return row.projectName;
    case BillingColumn::client: return row.clientName;
    case BillingColumn::hours: return row.hours;
    case BillingColumn::reviewHours: return row.reviewHours;
    case BillingColumn::hourlyRate: return row.hourlyRate;
    case BillingColumn::amount: return row.amount;
    }
    return row.projectName;
}

std::string title(BillingColumn column, const Localization& l) {
    switch (column) {
    case BillingColumn::project: return l.text("project");
    case BillingColumn::client: return l.text("client");
    case BillingColumn::hours: return l.text("duration");
    case BillingColumn::reviewHours: return l.text("billing_review");
    case BillingColumn::hourlyRate: return l.text("hourly_rate");
    case BillingColumn::amount: return l.text("amount");
    }
    return {};
}

}  // namespace

BillingTableModel::BillingTableModel(const Localization& localization, QObject* parent)
    : QAbstractTableModel(parent), localization_(localization) {}

bool BillingTableModel::setRows(const std::vector<BillingTableRow>& rows) {
    if (rows == rows_) return false;
    beginResetModel();
    rows_ = rows;
    endResetModel();
    return true;
}

int BillingTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int BillingTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : billingColumns;
}

QVariant BillingTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return qt(cell(rows_[static_cast<std::size_t>(index.row())], static_cast<BillingColumn>(index.column())));
}

QVariant BillingTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || role != Qt::DisplayRole) return {};
    return qt(title(static_cast<BillingColumn>(section), localization_));
}

}  // namespace quorvane
