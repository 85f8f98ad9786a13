#include "shell/look/Painting.h"

#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

/// The rectangle on whole device pixels, as far as the painter is not turned.
QRectF onPixels(const QPainter& painter, const QRectF& rectangle) {
    const QTransform device = painter.deviceTransform();
    if (device.type() > QTransform::TxScale) return rectangle;
    const QRectF mapped = device.mapRect(rectangle);
    const QPointF topLeft(std::round(mapped.left()), std::round(mapped.top()));
    const QPointF bottomRight(std::round(mapped.right()), std::round(mapped.bottom()));
    return device.inverted().mapRect(QRectF(topLeft, bottomRight));
}

/// The width in logical pixels that makes a line of whole device pixels, at least one.
double penWidth(const QPainter& painter, double width) {
    const double ratio = painter.device()->devicePixelRatioF();
    return std::max(1.0, std::floor(width * ratio + 0.25)) / ratio;
}

void drawInnerEdge(QPainter& painter, const QRectF& outer, double radius, const QColor& edge, double width) {
    const double pen = penWidth(painter, width);
    painter.setPen(QPen(edge, pen));
    painter.drawRoundedRect(outer.adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2), radius - pen / 2, radius - pen / 2);
}

}  // namespace

void paintPanel(QPainter& painter, const QRectF& rectangle, double radius, const QColor& fill, const QColor& edge) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF outer = onPixels(painter, rectangle);
    const double inner = std::min({radius, outer.width() / 2, outer.height() / 2});
    if (fill.isValid()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        // Half a pixel inside, so that the fill does not shine through the outer half of the edge's corners.
        const double inset = edge.isValid() ? penWidth(painter, 1) / 2 : 0;
        painter.drawRoundedRect(outer.adjusted(inset, inset, -inset, -inset), inner - inset, inner - inset);
    }
    if (edge.isValid()) {
        painter.setBrush(Qt::NoBrush);
        drawInnerEdge(painter, outer, inner, edge, 1);
    }
    painter.restore();
}

void paintFocusRing(QPainter& painter, const QRectF& rectangle, double radius, const QColor& ground) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (ground.isValid()) {
        painter.setPen(QPen(ground, 2));
        painter.drawRoundedRect(rectangle.adjusted(-1, -1, 1, 1), radius + 1, radius + 1);
    }
    painter.setPen(QPen(theme().accent, 2));
    painter.drawRoundedRect(rectangle.adjusted(-3, -3, 3, 3), radius + 3, radius + 3);
    painter.restore();
}

void paintProjectDot(QPainter& painter, const QRectF& rectangle, const ProjectTone& tone) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(toQColor(tone.accent), 2));
    painter.setBrush(toQColor(tone.fill));
    const double radius = std::min<double>(Metrics::blockRadius, rectangle.width() / 3);
    painter.drawRoundedRect(rectangle.adjusted(1, 1, -1, -1), radius - 0.5, radius - 0.5);
    painter.restore();
}

void paintAppTile(QPainter& painter, const QRectF& rectangle, const QColor& color, const QString& appName) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double radius = std::min<double>(Metrics::controlRadius, rectangle.width() / 4);
    painter.drawRoundedRect(rectangle, radius, radius);
    QFont letterFont = font(TypeRole::head);
    letterFont.setPixelSize(std::max(8, static_cast<int>(std::lround(rectangle.height() * 0.5))));
    painter.setFont(letterFont);
    painter.setPen(inkOn(color));
    const QString name = appName.trimmed();
    const bool isPair = !name.isEmpty() && name.front().isHighSurrogate();
    painter.drawText(rectangle, Qt::AlignCenter, name.left(isPair ? 2 : 1).toUpper());
    painter.restore();
}

double crisp(double position, double devicePixelRatio) {
    return (std::floor(position * devicePixelRatio) + 0.5) / devicePixelRatio;
}

}  // namespace quorvane
