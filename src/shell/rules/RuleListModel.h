#pragma once

#include "shell/state/RulesDashboardView.h"

#include <QAbstractListModel>
#include <vector>

namespace quorvane {

/// The rows of the rules' list for a view. For assistive technology each is one sentence.
class RuleListModel : public QAbstractListModel {
public:
    explicit RuleListModel(const Localization& localization, QObject* parent = nullptr);

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

}  // namespace quorvane
