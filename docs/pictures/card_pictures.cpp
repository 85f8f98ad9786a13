// Draws the pictures of the share cards for the documentation: each style with each sample, twelve on a sheet.
#include "shell/cards/SampleCards.h"
#include "shell/cards/ShareImageGenerator.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdio>
#include <fmt/format.h>

namespace quorvane {
namespace {

/// So that each style is seen in one that suits it, and each scheme is seen.
ColorScheme schemeOf(CardStyle style) {
    switch (style) {
    case CardStyle::clean:
    case CardStyle::neumorphism:
    case CardStyle::techFuture: return ColorScheme::ocean;
    case CardStyle::elegantShadow: return ColorScheme::purple;
    case CardStyle::glassmorphism: return ColorScheme::pastel;
    case CardStyle::gradientCard:
    case CardStyle::artistic: return ColorScheme::vibrant;
    case CardStyle::warmPaper: return ColorScheme::sunset;
    case CardStyle::darkMode: return ColorScheme::forest;
    case CardStyle::businessCard:
    case CardStyle::minimal: return ColorScheme::monochrome;
    case CardStyle::luxury: return ColorScheme::random;
    }
    return ColorScheme::ocean;
}

QImage imageOf(const ShareImage& card) {
    return QImage(reinterpret_cast<const uchar*>(card.pixels.data()), card.width, card.height, card.width * 4,
                  QImage::Format_ARGB32_Premultiplied)
        .copy();
}

bool drawSheet(const SampleCard& sample, const ShareImageGenerator& generator, const QString& folder) {
    constexpr int columns = 4;
    constexpr int gap = 16;
    const int width = ShareImageGenerator::width / 2 + gap;
    const int height = ShareImageGenerator::height / 2 + gap;
    QImage sheet(columns * width + gap, 3 * height + gap, QImage::Format_RGB32);
    sheet.fill(QColor(0xF5, 0xF6, 0xF8));
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    int at = 0;
    for (const auto& [style, name] : RawValues<CardStyle>::table) {
        const auto card = generator.generateShareImage(configOf(sample, style, schemeOf(style)), 0.5);
        if (!card) return false;
        painter.drawImage(gap + at % columns * width, gap + at / columns * height, imageOf(*card));
        ++at;
    }
    painter.end();
    return sheet.save(folder + "/cards-" + QString::fromStdString(sample.name) + ".png");
}

/// All cards of a sample in their whole size, to look at closely.
bool drawCards(const SampleCard& sample, const ShareImageGenerator& generator, const QString& folder) {
    bool isFine = true;
    for (const auto& [style, name] : RawValues<CardStyle>::table) {
        const auto card = generator.generateShareImage(configOf(sample, style, schemeOf(style)));
        isFine &=
            card && imageOf(*card).save(folder + QString::fromStdString(fmt::format("/{}-{}.png", sample.name, name)));
    }
    return isFine;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    using namespace quorvane;
    const QGuiApplication application(argc, argv);
    if (argc < 2 || argc > 3) {
        fmt::print(stderr, "usage: quorvane_card_pictures FOLDER [SAMPLE]\n"
                           "With a sample its cards are drawn one by one.\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const auto localization = Localization::fromEnvironment();
    const ShareImageGenerator generator(localization, sampleAddress);
    bool isFine = QDir().mkpath(folder);
    if (argc == 3) return isFine && drawCards(sampleCard(argv[2]), generator, folder) ? 0 : 1;
    for (const SampleCard& sample : sampleCards())
        isFine &= drawSheet(sample, generator, folder);
    return isFine ? 0 : 1;
}
