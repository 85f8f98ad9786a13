#include "shell/praise/CardPicture.h"

#include "shell/look/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace quorvane {

QImage pictureOf(const ShareImage& image) {
    return {reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
            static_cast<qsizetype>(image.width) * 4, QImage::Format_ARGB32_Premultiplied};
}

void paintCardPicture(QPainter& painter, const QRectF& rectangle, double radius, const ShareImage& image) {
    // Far smaller pictures have to be averaged: the painter looks at the nearest four pixels alone.
    const QSize device = (rectangle.size() * painter.device()->devicePixelRatioF()).toSize();
    const QImage picture = pictureOf(image);
    const QImage shown =
        picture.size() == device ? picture : picture.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    painter.setClipPath(path);
    painter.drawImage(rectangle, shown);
    painter.setClipping(false);
    painter.setPen(QPen(theme().line, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rectangle.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

}  // namespace quorvane
