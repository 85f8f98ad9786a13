#pragma once

#include "diagnostics/LogEntry.h"

#include <QAbstractListModel>
#include <vector>

namespace quorvane {

/// Entries of the log as rows, oldest first. What assistive technology hears of a row is time, level, module, message.
class LogListModel : public QAbstractListModel {
public:
    /// Is the row one of the darker ones? An entry keeps its answer when older ones go.
    static constexpr int isStripedRole = Qt::UserRole;

    using QAbstractListModel::QAbstractListModel;

    /// Shows these instead. Where old ones went at the front and new ones came at the end, the other rows stay, with
    /// what is selected among them.
    void setEntries(std::vector<LogEntry> entries);
    [[nodiscard]] const std::vector<LogEntry>& entries() const { return entries_; }
    [[nodiscard]] const LogEntry& entry(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<LogEntry> entries_;
    int gone_ = 0;  ///< rows that went at the front
};

}  // namespace quorvane
