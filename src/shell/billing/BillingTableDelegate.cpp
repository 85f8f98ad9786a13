#include "shell/billing/BillingTableDelegate.h"

#include "shell/billing/FittingFont.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <optional>

namespace quorvane {
namespace {

constexpr int dotSide = 14;
constexpr int dotGap = 10;
constexpr int columnGap = 12;

/// A text with its look.
struct Line {
    const std::string* text;
    QFont font;
    QColor ink;
};

Line mainLine(const BillingTableRow& row, BillingColumn column) {
    const Theme& colors = theme();
    QFont strong = font(TypeRole::body);
    strong.setWeight(QFont::DemiBold);
    const QFont plain = font(TypeRole::body);
    switch (column) {
    case BillingColumn::project: return {&row.projectName, font(TypeRole::bodyStrong), colors.text};
    case BillingColumn::client: return {&row.clientName, plain, row.hasClient ? colors.text2 : colors.text3};
    case BillingColumn::hours: return {&row.hours, plain, colors.text};
    case BillingColumn::reviewHours:
        return {&row.reviewHours, row.needsReview ? strong : plain, row.needsReview ? colors.warn : colors.text3};
    case BillingColumn::hourlyRate: return {&row.hourlyRate, plain, row.hasRate ? colors.text2 : colors.text3};
    case BillingColumn::amount:
        return {&row.amount, row.hasRate ? strong : plain, row.hasRate ? colors.text : colors.text3};
    }
    return {};
}

/// What has no column of its own.
std::optional<Line> secondLine(const BillingTableRow& row, BillingColumn column, const BillingTableLayout& layout) {
    const QFont small = font(TypeRole::caption);
    if (column == BillingColumn::project && !layout.has(BillingColumn::client))
        return Line{&row.clientName, small, theme().text3};
    if (column == BillingColumn::hours && !layout.has(BillingColumn::reviewHours) && row.needsReview) {
        QFont strong = small;
        strong.setWeight(QFont::DemiBold);
        return Line{&row.reviewHours, strong, theme().warn};
    }
    if (column == BillingColumn::amount && !layout.has(BillingColumn::hourlyRate) && row.hasRate)
        return Line{&row.hourlyRate, small, theme().text3};
    return std::nullopt;
}

bool isNumber(BillingColumn column) {
    return column != BillingColumn::project && column != BillingColumn::client;
}

void paintLine(QPainter& painter, const QRect& place, const Line& line, bool isAtEnd, Qt::LayoutDirection direction) {
    painter.setPen(line.ink);
    const auto side = QStyle::visualAlignment(direction, isAtEnd ? Qt::AlignRight : Qt::AlignLeft);
    const auto alignment = static_cast<int>(side | Qt::AlignVCenter);
    const QString text = qt(*line.text);
    painter.setFont(isAtEnd ? fittingFont(line.font, text, place.width()) : line.font);
    if (isAtEnd) {
        drawFigures(painter, place, alignment, text);
    } else {
        const QString fitting = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
        painter.drawText(place, alignment | Qt::TextSingleLine, isolated(fitting));
    }
}

}  // namespace

BillingTableDelegate::BillingTableDelegate(const BillingTableModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

QSize BillingTableDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, BillingTableLayout::rowHeight};
}

void BillingTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    const BillingTableRow& row = model_.rows()[static_cast<std::size_t>(index.row())];
    const auto column = static_cast<BillingColumn>(index.column());
    painter->save();
    paintGround(*painter, option, index);
    QRect place = textRectangle(option, column);
    if (column == BillingColumn::project) {
        const QRect dot =
            QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, {dotSide, dotSide}, place);
        paintProjectDot(*painter, dot, row.tone);
        const QRect rest(place.left() + dotSide + dotGap, place.top(), place.width() - dotSide - dotGap,
                         place.height());
        place = QStyle::visualRect(option.direction, place, rest);
    }
    const Line main = mainLine(row, column);
    const auto second = secondLine(row, column, layout_);
    if (second) {
        const int mainHeight = lineHeight(TypeRole::body);
        const int secondHeight = lineHeight(TypeRole::caption);
        const int top = place.top() + (place.height() - mainHeight - secondHeight) / 2;
        paintLine(*painter, {place.left(), top + mainHeight, place.width(), secondHeight}, *second, isNumber(column),
                  option.direction);
        place = {place.left(), top, place.width(), mainHeight};
    }
    paintLine(*painter, place, main, isNumber(column), option.direction);
    painter->restore();
}

QRect BillingTableDelegate::textRectangle(const QStyleOptionViewItem& option, BillingColumn column) const {
    const int before = column == BillingColumn::project ? BillingTableLayout::padding
                       : isNumber(column)               ? columnGap
                                                        : 0;
    const int behind = column == BillingColumn::amount ? BillingTableLayout::padding : isNumber(column) ? 0 : columnGap;
    return QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(before, 0, -behind, 0));
}

void BillingTableDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const bool isLast = index.row() + 1 == model_.rowCount();
    if (!isLast)
        painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), theme().line2);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    if (!isSelected && index.row() != hoveredRow_) return;
    const QColor& ground = isSelected ? theme().accSoft : theme().hover;
    const QRect area = isLast ? option.rect : option.rect.adjusted(0, 0, 0, -1);
    if (!isLast) return painter.fillRect(area, ground);
    // The card's corners are round.
    const double radius = Metrics::cardRadius - 1;
    QPainterPath cell;
    cell.addRect(area);
    QPainterPath card;
    card.addRoundedRect(QRectF(0, 0, option.widget->width(), option.rect.bottom() + 1), radius, radius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(card.intersected(cell), ground);
}

}  // namespace quorvane
