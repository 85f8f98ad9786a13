#pragma once

#include "shell/state/BillingCards.h"

#include <QAbstractTableModel>
#include <vector>

namespace quorvane {

enum class BillingColumn { project, client, hours, reviewHours, hourlyRate, amount };
inline constexpr int billingColumns = 6;

/// The lines of the billing table, each with plain texts for assistive technology.
class BillingTableModel : public QAbstractTableModel {
public:
    explicit BillingTableModel(const Localization& localization, QObject* parent = nullptr);

    /// True when they are others than before.
    bool setRows(const std::vector<BillingTableRow>& rows);
    [[nodiscard]] const std::vector<BillingTableRow>& rows() const { return rows_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const Localization& localization_;
    std::vector<BillingTableRow> rows_;
};

}  // namespace quorvane
