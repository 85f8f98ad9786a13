#pragma once

#include <QImage>
#include <QRectF>

class QPainter;
class QPainterPath;

namespace quorvane {

/// Blurs the picture (ARGB32 premultiplied) so that each pixel reaches about `radius` around it.
void blur(QImage& image, double radius);

/// A soft shadow of a shape, or a light, of this colour and reach.
void paintGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, double radius, const QPointF& offset);

/// The same inside of the shape, along its edge.
void paintInnerGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, double radius,
                    const QPointF& offset);

/// A tile of fine grain to multiply with, the same each time.
[[nodiscard]] QImage paperGrain();

}  // namespace quorvane
