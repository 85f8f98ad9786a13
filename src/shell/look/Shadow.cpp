#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QPixmapCache>
#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvane {
namespace {

struct ShadowShape {
    int offset;  // downwards
    int blur;    // how far it reaches round the panel
    double opacity;
};

ShadowShape shapeOf(Elevation elevation) {
    const bool isDark = theme().isDark;
    switch (elevation) {
    case Elevation::popUp: return {8, 24, isDark ? 0.5 : 0.16};
    case Elevation::sheet: return {18, 48, isDark ? 0.55 : 0.22};
    }
    return {};
}

/// One pass of a mean over `2 * reach + 1` samples along a line; beyond its ends there is nothing.
void boxBlurLine(uchar* line, int count, qsizetype step, int reach, std::vector<uchar>& copy) {
    copy.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        copy[static_cast<std::size_t>(i)] = line[i * step];
    const int window = 2 * reach + 1;
    int sum = 0;
    for (int i = 0; i < std::min(reach, count); ++i)
        sum += copy[static_cast<std::size_t>(i)];
    for (int i = 0; i < count; ++i) {
        if (i + reach < count) sum += copy[static_cast<std::size_t>(i) + static_cast<std::size_t>(reach)];
        if (i - reach - 1 >= 0) sum -= copy[static_cast<std::size_t>(i) - static_cast<std::size_t>(reach) - 1];
        line[i * step] = static_cast<uchar>((sum + window / 2) / window);
    }
}

/// Three means come close to a Gaussian whose deviation is half the blur, all of it within the blur's reach.
void blur(QImage& mask, double radius) {
    const int reach = std::max(1, static_cast<int>(std::lround(radius / 3)));
    std::vector<uchar> copy;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask.height(); ++y)
            boxBlurLine(mask.scanLine(y), mask.width(), 1, reach, copy);
        for (int x = 0; x < mask.width(); ++x)
            boxBlurLine(mask.bits() + x, mask.height(), mask.bytesPerLine(), reach, copy);
    }
}

/// The blurred shadow of a panel of this size, which may be too small for the blur to end inside it.
QPixmap shadowPixmap(const QSize& panel, double radius, const ShadowShape& shape, double ratio) {
    const QString key = QStringLiteral("quorvane/shadow/%1x%2/%3/%4/%5/%6")
                            .arg(panel.width())
                            .arg(panel.height())
                            .arg(radius)
                            .arg(shape.blur)
                            .arg(shape.opacity)
                            .arg(ratio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    const QSizeF size = QSizeF(panel.width() + 2 * shape.blur, panel.height() + 2 * shape.blur) * ratio;
    QImage mask(size.toSize(), QImage::Format_Alpha8);
    mask.fill(0);
    QPainter maskPainter(&mask);
    maskPainter.setRenderHint(QPainter::Antialiasing);
    maskPainter.scale(ratio, ratio);
    maskPainter.setPen(Qt::NoPen);
    maskPainter.setBrush(Qt::black);
    maskPainter.drawRoundedRect(QRectF(QPointF(shape.blur, shape.blur), QSizeF(panel)), radius, radius);
    maskPainter.end();
    blur(mask, shape.blur * ratio);
    QImage image(mask.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(shape.opacity);
    painter.drawImage(0, 0, mask);
    painter.end();
    pixmap = QPixmap::fromImage(image);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

}  // namespace

void paintShadow(QPainter& painter, const QRectF& panel, double radius, Elevation elevation) {
    const ShadowShape shape = shapeOf(elevation);
    const double ratio = painter.device()->devicePixelRatioF();
    // From here inwards the shadow is even, so one pixel can be stretched over the rest.
    const int corner = static_cast<int>(std::ceil(radius)) + shape.blur;
    const QSize source(std::min(static_cast<int>(panel.width()), 2 * corner + 1),
                       std::min(static_cast<int>(panel.height()), 2 * corner + 1));
    const QPixmap pixmap = shadowPixmap(source, radius, shape, ratio);
    const QRectF target = panel.adjusted(-shape.blur, shape.offset - shape.blur, shape.blur, shape.offset + shape.blur);
    const double columns[] = {0, source.width() / 2.0 + shape.blur, source.width() / 2.0 + shape.blur,
                              source.width() + 2.0 * shape.blur};
    const double rows[] = {0, source.height() / 2.0 + shape.blur, source.height() / 2.0 + shape.blur,
                           source.height() + 2.0 * shape.blur};
    const double extraWidth = panel.width() - source.width();
    const double extraHeight = panel.height() - source.height();
    painter.save();
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            // The middle column and row are one device pixel of the source, stretched.
            const double x = columns[column] + (column > 1 ? extraWidth : 0);
            const double y = rows[row] + (row > 1 ? extraHeight : 0);
            const double width = column == 1 ? extraWidth : columns[column + 1] - columns[column];
            const double height = row == 1 ? extraHeight : rows[row + 1] - rows[row];
            if (width <= 0 || height <= 0) continue;
            const QRectF from(columns[column] * ratio, rows[row] * ratio,
                              column == 1 ? 1 : (columns[column + 1] - columns[column]) * ratio,
                              row == 1 ? 1 : (rows[row + 1] - rows[row]) * ratio);
            painter.drawPixmap(QRectF(target.left() + x, target.top() + y, width, height), pixmap, from);
        }
    }
    painter.restore();
}

}  // namespace quorvane
