#pragma once

#include "shell/look/Typography.h"

#include <QRect>
#include <QStyleOptionViewItem>

class QColor;
class QPainter;

namespace quorvane {

/// What a delegate paints a row with. Everything is described from left to right, from the row's own corner, and
/// stands mirrored where the layout is. The painter is as before afterwards.
class RowPainting {
public:
    RowPainting(QPainter& painter, const QStyleOptionViewItem& option);
    RowPainting(const RowPainting&) = delete;
    RowPainting& operator=(const RowPainting&) = delete;
    ~RowPainting();

    /// As the style has rows: chosen, under the pointer, striped, with the focus.
    void ground();
    /// On one line, cut with "…".
    void text(const QRect& rectangle, const QFont& font, const QColor& ink, const QString& words,
              Qt::Alignment side = Qt::AlignLeft);
    /// The whole text in the middle of a panel. Without an edge it gets one where strong contrast is asked for.
    void chip(const QRect& rectangle, double radius, const QColor& ground, const QFont& font, const QColor& ink,
              const QString& words);
    [[nodiscard]] QRect placed(const QRect& rectangle) const;

private:
    QPainter& painter_;
    const QStyleOptionViewItem& option_;
};

}  // namespace quorvane
