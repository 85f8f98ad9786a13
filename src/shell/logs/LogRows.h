#pragma once

#include "diagnostics/LogEntry.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <vector>

namespace quorvane {

/// "WARNING"; the same in every language.
[[nodiscard]] QString levelText(LogLevel level);

/// Entries of the log for a list. What assistive technology hears of one is time, level, module, message.
class LogRows : public QAbstractListModel {
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

/// Paints an entry of `LogRows` in four columns: time, level, module and message.
class LogRowDelegate : public QStyledItemDelegate {
public:
    /// A full row keeps time and message in fixed pitch; a compact one is a line of a card.
    enum class Kind { full, compact };
    LogRowDelegate(Kind kind, QObject* parent) : QStyledItemDelegate(parent), kind_(kind) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    Kind kind_;
};

}  // namespace quorvane
