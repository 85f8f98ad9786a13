#pragma once

#include "praise/ShareImage.h"

#include <QImage>
#include <QRectF>

class QPainter;

namespace quorvane {

/// The image over the same pixels: it must not outlive them.
[[nodiscard]] QImage pictureOf(const ShareImage& image);

/// The image, made as small as the rectangle, with round corners and the edge of a card.
void paintCardPicture(QPainter& painter, const QRectF& rectangle, double radius, const ShareImage& image);

}  // namespace quorvane
