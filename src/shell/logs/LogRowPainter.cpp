#include "shell/logs/LogRowPainter.h"

#include "shell/logs/LogRowText.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int chipHeight = 20;
constexpr int chipRadius = 5;
constexpr int chipPadding = 9;

/// Where the columns begin and how wide they are, from the row's start.
struct Columns {
    int time;
    int timeWidth;
    int level;
    int levelWidth;
    int module;
    int moduleWidth;
    int message;
};

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

TypeRole timeRole(LogRowPainter::Kind kind) {
    return kind == LogRowPainter::Kind::full ? TypeRole::fixed : TypeRole::labelPlain;
}

Columns columnsFor(LogRowPainter::Kind kind) {
    const bool isFull = kind == LogRowPainter::Kind::full;
    const int widestLevel = QFontMetrics(font(TypeRole::bar)).horizontalAdvance(LogRowText::level(LogLevel::warning));
    const QFontMetrics timeMetrics(font(timeRole(kind)));
    Columns columns{};
    columns.time = isFull ? 16 : 0;
    columns.timeWidth = timeMetrics.horizontalAdvance(QStringLiteral("00:00:00.000")) + (isFull ? 2 : 0);
    columns.level = columns.time + columns.timeWidth + (isFull ? 15 : 8);
    columns.levelWidth = widestLevel + 2 * chipPadding;
    columns.module = columns.level + columns.levelWidth + (isFull ? 12 : 10);
    columns.moduleWidth = static_cast<int>((isFull ? 138 : 104) * typeScale());
    columns.message = columns.module + columns.moduleWidth + (isFull ? 12 : 10);
    return columns;
}

}  // namespace

void LogRowPainter::paint(QPainter& painter, const QRect& row, Qt::LayoutDirection direction, const LogEntry& entry,
                          Kind kind) {
    const Theme& t = theme();
    const Columns columns = columnsFor(kind);
    const int end = row.width() - columns.time;
    const auto placed = [&](int start, int width) {
        return QStyle::visualRect(direction, row, QRect(row.left() + start, row.top(), width, row.height()));
    };
    const auto alignment = static_cast<int>(QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter));
    const auto write = [&](int start, int width, TypeRole role, const QColor& ink, const QString& words) {
        painter.setFont(font(role));
        painter.setPen(ink);
        painter.drawText(placed(start, width), alignment | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(words, Qt::ElideRight, width));
    };
    const bool isError = entry.level == LogLevel::error && kind == Kind::full;
    const TypeRole messageRole = kind == Kind::full ? TypeRole::fixed : TypeRole::labelPlain;
    write(columns.time, columns.timeWidth, timeRole(kind), t.text2, LogRowText::time(entry));
    write(columns.module, columns.moduleWidth, TypeRole::label, t.text2, qt(entry.module));
    write(columns.message, std::max(0, end - columns.message), messageRole, isError ? t.bad : t.text,
          LogRowText::message(entry));

    QRect chip = placed(columns.level, columns.levelWidth);
    const int height = std::max(chipHeight, lineHeight(TypeRole::bar) + 6);
    chip = QRect(chip.left(), row.top() + (row.height() - height) / 2, chip.width(), height);
    const auto [ground, ink] = groundAndInk(entry.level);
    paintPanel(painter, chip, chipRadius, ground, t.isHighContrast ? t.control : QColor());
    painter.setFont(font(TypeRole::bar));
    painter.setPen(ink);
    painter.drawText(chip, Qt::AlignCenter, LogRowText::level(entry.level));
}

}  // namespace quorvane
