#include "shell/chart/RowPainter.h"

#include "shell/look/Painting.h"

#include <QStyle>
#include <QWidget>
#include <cmath>

namespace quorvane {

RowPainter::RowPainter(QWidget& row) : row_(row), painter_(&row) {
    painter_.setRenderHint(QPainter::Antialiasing);
}

QRect RowPainter::placed(const QRect& rectangle) const {
    return QStyle::visualRect(row_.layoutDirection(), row_.rect(), rectangle);
}

int RowPainter::aligned(Qt::Alignment side) const {
    return static_cast<int>(QStyle::visualAlignment(row_.layoutDirection(), side) | Qt::AlignVCenter);
}

void RowPainter::text(const QRect& rectangle, TypeRole role, const QColor& color, const QString& text) {
    painter_.setFont(font(role));
    painter_.setPen(color);
    painter_.drawText(placed(rectangle), aligned(Qt::AlignLeft),
                      painter_.fontMetrics().elidedText(text, Qt::ElideRight, rectangle.width()));
}

int RowPainter::figures(const QRect& rectangle, TypeRole role, const QColor& color, const QString& text) {
    painter_.save();
    painter_.setLayoutDirection(Qt::LeftToRight);  // number and unit keep their order
    painter_.setFont(font(role));
    painter_.setPen(color);
    const double width = drawFigures(painter_, QRectF(placed(rectangle)), aligned(Qt::AlignRight), isolated(text));
    painter_.restore();
    return static_cast<int>(std::ceil(width));
}

void RowPainter::fill(const QRect& rectangle, double radius, const QColor& color) {
    paintPanel(painter_, QRectF(placed(rectangle)), radius, color, {});
}

}  // namespace quorvane
