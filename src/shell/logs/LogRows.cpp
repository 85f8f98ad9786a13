#include "shell/logs/LogRows.h"

#include "base/DateText.h"
#include "shell/look/RowPainting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

constexpr int leastChipHeight = 20;
constexpr int chipRadius = 5;
constexpr int chipPadding = 9;
constexpr int markWidth = 3;  // of the bar at the start of a selected row

/// "09:00:00.000", in the local time zone.
QString timeText(const LogEntry& entry) {
    return qt(localDateText(entry.timestamp, "HH:mm:ss.SSS"));
}

std::pair<QColor, QColor> groundAndInk(LogLevel level) {
    const Theme& t = theme();
    switch (level) {
    case LogLevel::debug: return {t.sunken, t.text2};
    case LogLevel::info: return {t.accSoft, t.accInk};
    case LogLevel::warning: return {t.warnSoft, t.warn};
    case LogLevel::error: return {t.badSoft, t.bad};
    }
    return {};
}

void paintEntry(RowPainting& row, QSize size, const LogEntry& entry, bool isFull) {
    const Theme& t = theme();
    const QFont timeFont = font(isFull ? TypeRole::fixed : TypeRole::labelPlain);
    const QFont levelFont = font(TypeRole::bar);
    const int margin = isFull ? 16 : 0;
    const int timeWidth = QFontMetrics(timeFont).horizontalAdvance(QStringLiteral("00:00:00.000")) + (isFull ? 2 : 0);
    const int levelWidth = QFontMetrics(levelFont).horizontalAdvance(levelText(LogLevel::warning)) + 2 * chipPadding;
    const int moduleWidth = static_cast<int>((isFull ? 138 : 104) * typeScale());
    const int gap = isFull ? 12 : 10;
    const int level = margin + timeWidth + (isFull ? 15 : 8);
    const int module = level + levelWidth + gap;
    const int message = module + moduleWidth + gap;
    const bool isLoud = isFull && entry.level == LogLevel::error;
    row.text({margin, 0, timeWidth, size.height()}, timeFont, t.text2, timeText(entry));
    row.text({module, 0, moduleWidth, size.height()}, font(TypeRole::label), t.text2, qt(entry.module));
    row.text({message, 0, std::max(0, size.width() - margin - message), size.height()}, timeFont,
             isLoud ? t.bad : t.text, qt(entry.message).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    const int chipHeight = std::max(leastChipHeight, lineHeight(TypeRole::bar) + 6);
    const auto [ground, ink] = groundAndInk(entry.level);
    row.chip({level, (size.height() - chipHeight) / 2, levelWidth, chipHeight}, chipRadius, ground, levelFont, ink,
             levelText(entry.level));
}

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

QString levelText(LogLevel level) {
    return qt(std::string(rawValue(level)));
}

void LogRows::setEntries(std::vector<LogEntry> entries) {
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

const LogEntry& LogRows::entry(const QModelIndex& index) const {
    return entries_.at(static_cast<std::size_t>(index.row()));
}

int LogRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant LogRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const LogEntry& shown = entry(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: return qt(shown.message);
    case Qt::AccessibleTextRole:
        return QStringList{timeText(shown), levelText(shown.level), qt(shown.module), qt(shown.message)}.join(
            QStringLiteral(", "));
    case isStripedRole: return (index.row() + gone_) % 2 == 1;
    default: return {};
    }
}

void LogRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const bool isFull = kind_ == Kind::full;
    auto whole = option;
    whole.features.setFlag(QStyleOptionViewItem::Alternate, isFull && index.data(LogRows::isStripedRole).toBool());
    RowPainting row(*painter, whole);
    if (isFull) {
        row.ground();
        if (option.state.testFlag(QStyle::State_Selected))
            painter->fillRect(row.placed({0, 0, markWidth, option.rect.height()}), theme().accent);
    } else {
        painter->fillRect(row.placed({0, 0, option.rect.width(), 1}), theme().line2);
    }
    paintEntry(row, option.rect.size(), dynamic_cast<const LogRows&>(*index.model()).entry(index), isFull);
}

QSize LogRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    if (kind_ == Kind::full) return {0, std::max(32, lineHeight(TypeRole::fixed) + 8)};
    return {0, std::max(34, lineHeight(TypeRole::labelPlain) + 16)};
}

}  // namespace quorvane
