#pragma once

#include "shell/look/Typography.h"

#include <QPainter>
#include <QRect>

class QWidget;

namespace quorvane {

/// Paints a row of which everything is described from left to right, and stands mirrored where the layout is.
class RowPainter {
public:
    explicit RowPainter(QWidget& row);

    [[nodiscard]] QPainter& painter() { return painter_; }
    [[nodiscard]] QRect placed(const QRect& rectangle) const;

    /// From the rectangle's start, cut with "…".
    void text(const QRect& rectangle, TypeRole role, const QColor& color, const QString& text);
    /// At the rectangle's end. Returns the room that it takes, in whole pixels.
    int figures(const QRect& rectangle, TypeRole role, const QColor& color, const QString& text);
    void fill(const QRect& rectangle, double radius, const QColor& color);

private:
    [[nodiscard]] int aligned(Qt::Alignment side) const;

    QWidget& row_;
    QPainter painter_;
};

}  // namespace quorvane
