#pragma once

#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <string>

class QPainter;

namespace quorvane {

/// What a text is, and so how large and heavy.
enum class TypeRole {
    display,     ///< 28/34, 600
    title,       ///< 20/28, 600
    head,        ///< 15/22, 600
    body,        ///< 13/20, 400
    bodyStrong,  ///< 13/20, 500
    label,       ///< 12/16, 500
    labelPlain,  ///< 12/16, 400
    caption,     ///< 11/14, 400
    bar,         ///< 10/14, 600
    month,       ///< 10/13, 400
    week,        ///< 9, 400
    weekSmall,   ///< 8, 400
    fixed,       ///< 12/19, fixed pitch
};

/// The font of a role. Sizes are pixels at a desktop font of 10 points and grow with it; the families follow the words'
/// language, so that Chinese, Japanese and Korean text each gets its own shapes.
[[nodiscard]] QFont font(TypeRole role);

/// The height of a line of the role, in logical pixels.
[[nodiscard]] int lineHeight(TypeRole role);

/// The factor by which the desktop's font differs from 10 points.
[[nodiscard]] double typeScale();

/// Draws a number so that its digits stand in columns: each digit gets the advance of the widest. `alignment` is
/// horizontal and vertical as for `QPainter::drawText`. Returns the width, in logical pixels.
double drawFigures(QPainter& painter, const QRectF& rectangle, int alignment, const QString& text);
[[nodiscard]] double figuresWidth(const QFont& font, const QString& text);

/// The text between isolates, so that it stays whole in right-to-left surroundings: names, numbers with units, code.
[[nodiscard]] QString isolated(const QString& text);

/// From the core's text, and to it.
[[nodiscard]] inline QString qt(const std::string& text) {
    return QString::fromStdString(text);
}

}  // namespace quorvane
