#include "shell/cards/CardEffects.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace quorvane {
namespace {

constexpr int channels = 4;

/// A mean over `2 * reach + 1` pixels along a line; beyond its ends its last pixels go on.
void meanAlong(uchar* line, int count, qsizetype step, int reach, std::vector<uchar>& copy) {
    copy.resize(static_cast<std::size_t>(count) * channels);
    for (int i = 0; i < count; ++i)
        std::copy_n(line + i * step, channels, copy.begin() + static_cast<std::ptrdiff_t>(i) * channels);
    const auto pixel = [&](int i) {
        return copy.data() + static_cast<std::ptrdiff_t>(std::clamp(i, 0, count - 1)) * channels;
    };
    const int width = 2 * reach + 1;
    std::array<int, channels> sum{};
    for (int i = -reach; i <= reach; ++i)
        for (std::size_t c = 0; c < channels; ++c)
            sum[c] += pixel(i)[c];
    for (int i = 0; i < count; ++i) {
        const uchar* const comes = pixel(i + reach + 1);
        const uchar* const goes = pixel(i - reach);
        for (std::size_t c = 0; c < channels; ++c) {
            line[i * step + static_cast<qsizetype>(c)] = static_cast<uchar>((sum[c] + width / 2) / width);
            sum[c] += comes[c] - goes[c];
        }
    }
}

/// Paints what `draw` leaves on a clear picture of the part of the card around the shape, blurred. Half the size is
/// enough for what is blurred anyway.
template <class Draw>
void paintBlurred(QPainter& painter, const QRectF& part, double radius, const Draw& draw) {
    constexpr double scale = 0.5;
    const QRectF room = part.adjusted(-2 * radius, -2 * radius, 2 * radius, 2 * radius).toAlignedRect();
    QImage image((room.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter inside(&image);
    inside.setRenderHint(QPainter::Antialiasing);
    inside.scale(scale, scale);
    inside.translate(-room.topLeft());
    draw(inside);
    inside.end();
    blur(image, radius * scale);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(room.topLeft(), QSizeF(image.size()) / scale), image);
    painter.restore();
}

}  // namespace

void blur(QImage& image, double radius) {
    // Three means come close to a Gaussian.
    const int reach = std::max(1, static_cast<int>(std::lround(radius / 3)));
    std::vector<uchar> copy;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < image.height(); ++y)
            meanAlong(image.scanLine(y), image.width(), channels, reach, copy);
        for (int x = 0; x < image.width(); ++x)
            meanAlong(image.bits() + static_cast<qsizetype>(x) * channels, image.height(), image.bytesPerLine(), reach,
                      copy);
    }
}

void paintGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, double radius,
               const QPointF& offset) {
    const QPainterPath moved = shape.translated(offset);
    paintBlurred(painter, moved.boundingRect(), radius, [&](QPainter& inside) { inside.fillPath(moved, color); });
}

void paintInnerGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, double radius,
                    const QPointF& offset) {
    QPainterPath around;
    const QRectF bounds = shape.boundingRect();
    around.addRect(bounds.adjusted(-4 * radius, -4 * radius, 4 * radius, 4 * radius));
    around = around.subtracted(shape.translated(offset));
    painter.save();
    painter.setClipPath(shape, Qt::IntersectClip);
    paintBlurred(painter, bounds, radius, [&](QPainter& inside) { inside.fillPath(around, color); });
    painter.restore();
}

QImage paperGrain() {
    constexpr int side = 128;
    QImage tile(side, side, QImage::Format_ARGB32_Premultiplied);
    std::uint32_t state = 0x9E3779B9;  // any number but 0
    for (int y = 0; y < side; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(tile.scanLine(y));
        for (int x = 0; x < side; ++x) {
            // Marsaglia's xorshift with 32 bits.
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            const int grain = 246 + static_cast<int>(state % 10);
            line[x] = qRgb(grain, grain, grain);
        }
    }
    return tile;
}

}  // namespace quorvane
