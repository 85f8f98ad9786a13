#include "shell/logs/LogListModel.h"

#include "shell/logs/LogRowText.h"
#include "shell/look/Typography.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

/// How many entries went at the front of `before`, if `after` is the rest of it with others behind.
std::optional<std::size_t> goneAtFront(const std::vector<LogEntry>& before, const std::vector<LogEntry>& after) {
    if (before.empty() || after.empty()) return std::nullopt;
    const auto first = std::ranges::find(before, after.front().id, &LogEntry::id);
    const auto kept = static_cast<std::size_t>(std::distance(first, before.end()));
    const bool isRest = kept > 0 && kept <= after.size() &&
                        std::equal(first, before.end(), after.begin(),
                                   [](const LogEntry& a, const LogEntry& b) { return a.id == b.id; });
    return isRest ? std::optional(before.size() - kept) : std::nullopt;
}

}  // namespace

void LogListModel::setEntries(std::vector<LogEntry> entries) {
    const auto gone = goneAtFront(entries_, entries);
    if (!gone) {
        beginResetModel();
        entries_ = std::move(entries);
        gone_ = 0;
        endResetModel();
        return;
    }
    if (*gone > 0) {
        const auto count = static_cast<int>(*gone);
        beginRemoveRows({}, 0, count - 1);
        entries_.erase(entries_.begin(), entries_.begin() + count);
        gone_ += count;
        endRemoveRows();
    }
    if (entries.size() == entries_.size()) return;
    beginInsertRows({}, rowCount(), static_cast<int>(entries.size()) - 1);
    entries_ = std::move(entries);
    endInsertRows();
}

const LogEntry& LogListModel::entry(const QModelIndex& index) const {
    return entries_.at(static_cast<std::size_t>(index.row()));
}

int LogListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant LogListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: return qt(entry(index).message);
    case Qt::AccessibleTextRole: return LogRowText::spoken(entry(index));
    case isStripedRole: return (index.row() + gone_) % 2 == 1;
    default: return {};
    }
}

}  // namespace quorvane
