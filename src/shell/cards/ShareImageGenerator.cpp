#include "shell/cards/ShareImageGenerator.h"

#include "shell/cards/ShareImageView.h"

#include <QBuffer>
#include <QImage>
#include <cmath>
#include <cstring>
#include <utility>

namespace quorvane {
namespace {

ShareImage shareImageOf(const QImage& image) {
    ShareImage made{.width = image.width(), .height = image.height(), .pixels = {}};
    const auto columns = static_cast<std::size_t>(image.width());
    made.pixels.resize(columns * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(made.pixels.data() + static_cast<std::size_t>(y) * columns, image.constScanLine(y),
                    columns * sizeof(std::uint32_t));
    return made;
}

/// No profile and no resolution of a screen: only pixels.
QImage blankCard() {
    QImage image(ShareImageGenerator::width, ShareImageGenerator::height, QImage::Format_ARGB32_Premultiplied);
    if (!image.isNull()) image.fill(Qt::white);
    return image;
}

}  // namespace

ShareImageGenerator::ShareImageGenerator(const Localization& localization, std::string address)
    : localization_(localization), address_(std::move(address)) {}

std::optional<ShareImage> ShareImageGenerator::generateShareImage(const ShareImageConfig& config, double scale) const {
    QImage image = blankCard();
    if (image.isNull()) return std::nullopt;
    QPainter painter(&image);
    CardCanvas canvas(painter);
    ShareImageView{.config = config, .localization = localization_, .address = address_}.paint(canvas);
    painter.end();
    if (scale < 1)
        image =
            image.scaled(static_cast<int>(std::lround(width * scale)), static_cast<int>(std::lround(height * scale)),
                         Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (image.isNull()) return std::nullopt;
    return shareImageOf(image);
}

ShareImageGenerator::Layout ShareImageGenerator::layOut(const ShareImageConfig& config) const {
    QImage image = blankCard();
    QPainter painter(&image);
    CardCanvas canvas(painter, CardCanvas::Texts::leftOut);
    ShareImageView{.config = config, .localization = localization_, .address = address_}.paint(canvas);
    painter.end();
    return {.ground = shareImageOf(image), .texts = canvas.placedTexts()};
}

std::string pngOf(const ShareImage& image) {
    const QImage pixels(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                        image.width * static_cast<qsizetype>(sizeof(std::uint32_t)),
                        QImage::Format_ARGB32_Premultiplied);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    // Without a channel for transparency that no pixel has.
    pixels.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG");
    return bytes.toStdString();
}

}  // namespace quorvane
