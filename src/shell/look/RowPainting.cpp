#include "shell/look/RowPainting.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace quorvane {

RowPainting::RowPainting(QPainter& painter, const QStyleOptionViewItem& option) : painter_(painter), option_(option) {
    painter_.save();
}

RowPainting::~RowPainting() {
    painter_.restore();
}

void RowPainting::ground() {
    const QStyle* style = option_.widget != nullptr ? option_.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option_, &painter_, option_.widget);
}

void RowPainting::text(const QRect& rectangle, const QFont& font, const QColor& ink, const QString& words,
                       Qt::Alignment side) {
    painter_.setFont(font);
    painter_.setPen(ink);
    const auto alignment = QStyle::visualAlignment(option_.direction, side) | Qt::AlignAbsolute | Qt::AlignVCenter;
    painter_.drawText(placed(rectangle), static_cast<int>(alignment) | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(words, Qt::ElideRight, rectangle.width()));
}

void RowPainting::chip(const QRect& rectangle, double radius, const QColor& ground, const QFont& font,
                       const QColor& ink, const QString& words) {
    paintPanel(painter_, placed(rectangle), radius, ground, theme().isHighContrast ? theme().control : QColor());
    text(rectangle, font, ink, words, Qt::AlignHCenter);
}

QRect RowPainting::placed(const QRect& rectangle) const {
    return QStyle::visualRect(option_.direction, option_.rect, rectangle.translated(option_.rect.topLeft()));
}

}  // namespace quorvane
