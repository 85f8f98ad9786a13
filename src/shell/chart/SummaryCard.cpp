#include "shell/chart/SummaryCard.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

constexpr int topPadding = 12;
constexpr int gapBelowTitle = 6;
constexpr int columnGap = 28;
constexpr int markWidth = 18;  ///< with the gap to the name

int rowHeight() {
    return lineHeight(TypeRole::body) + 6;
}

}  // namespace

SummaryCard::SummaryCard(const QString& title, QString emptyText, const Localization& localization, QWidget* parent)
    : Card(parent), title_(title), emptyText_(std::move(emptyText)), localization_(localization) {
    forgetAccessibleRole(*this);  // its rows are parts of it
    setAccessibleName(title);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void SummaryCard::setRows(std::vector<SummaryRow> rows) {
    rows_ = std::move(rows);
    updateGeometry();
    update();
}

QSize SummaryCard::sizeHint() const {
    const int lines = std::max((partCount() + 1) / 2, 1);
    return {400, titleRectangle().bottom() + 1 + gapBelowTitle + lines * rowHeight() + topPadding - 1};
}

QRect SummaryCard::titleRectangle() const {
    return {Metrics::cardPadding + 1, topPadding, width() - 2 * (Metrics::cardPadding + 1),
            lineHeight(TypeRole::label)};
}

QString SummaryCard::partName(int part) const {
    const SummaryRow& row = rows_[static_cast<std::size_t>(part)];
    return qt(localization_.text("a11y_legend_row", row.name, fmt::format("{:.1f}", row.hours),
                                 fmt::format("{:.1f}", row.percentage)));
}

QRect SummaryCard::partRectangle(int part) const {
    const QRect title = titleRectangle();
    const int columnWidth = (title.width() - columnGap) / 2;
    const QRect leftToRight(title.left() + part % 2 * (columnWidth + columnGap),
                            title.bottom() + 1 + gapBelowTitle + part / 2 * rowHeight(), columnWidth, rowHeight());
    return QStyle::visualRect(layoutDirection(), rect(), leftToRight);
}

bool SummaryCard::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return Card::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    for (int i = 0; i < partCount(); ++i)
        if (partRectangle(i).contains(help->pos())) {
            QToolTip::showText(help->globalPos(), qt(rows_[static_cast<std::size_t>(i)].name), this);
            return true;
        }
    QToolTip::hideText();
    return true;
}

void SummaryCard::paintEvent(QPaintEvent* event) {
    Card::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(quorvane::font(TypeRole::label));
    painter.setPen(theme().text2);
    painter.drawText(titleRectangle(), Qt::AlignLeft | Qt::AlignVCenter, title_);
    for (int i = 0; i < partCount(); ++i)
        paintRow(painter, rows_[static_cast<std::size_t>(i)], partRectangle(i));
    if (rows_.empty()) {
        painter.setFont(quorvane::font(TypeRole::body));
        painter.setPen(theme().text3);
        painter.drawText(titleRectangle().translated(0, titleRectangle().height() + gapBelowTitle + 4),
                         Qt::AlignLeft | Qt::AlignVCenter, emptyText_);
    }
}

void SummaryCard::paintRow(QPainter& painter, const SummaryRow& row, const QRect& rectangle) const {
    const auto placed = [&](const QRect& leftToRight) {
        return QStyle::visualRect(layoutDirection(), rectangle, leftToRight);
    };
    const int side = row.tone ? 12 : 10;
    const QRect mark = placed({rectangle.left(), rectangle.center().y() - side / 2 + 1, side, side});
    if (row.tone) {
        paintProjectDot(painter, mark, *row.tone);
    } else {
        paintPanel(painter, mark, 3, toQColor(row.color), {});
    }
    const QString hours = isolated(qt(fmt::format("{:.1f} h", row.hours)));
    painter.setFont(quorvane::font(TypeRole::body));
    const int hoursWidth = static_cast<int>(figuresWidth(painter.font(), hours)) + 1;
    const int nameWidth = rectangle.width() - markWidth - hoursWidth - 8;
    painter.setPen(theme().text2);
    const Qt::LayoutDirection direction = painter.layoutDirection();
    painter.setLayoutDirection(Qt::LeftToRight);  // of a number with its unit, in every language
    drawFigures(painter, placed({rectangle.right() + 1 - hoursWidth, rectangle.top(), hoursWidth, rectangle.height()}),
                Qt::AlignRight | Qt::AlignVCenter, hours);
    painter.setLayoutDirection(direction);
    if (nameWidth <= 0) return;
    painter.setPen(theme().text);
    painter.drawText(placed({rectangle.left() + markWidth, rectangle.top(), nameWidth, rectangle.height()}),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(qt(row.name), Qt::ElideRight, nameWidth));
}

}  // namespace quorvane
