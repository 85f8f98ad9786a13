#include "shell/cards/ShareImageView.h"

#include "shell/cards/CardStyles.h"

namespace quorvane {
namespace {

std::string withoutScheme(const std::string& address) {
    const std::size_t at = address.find("://");
    return at == std::string::npos ? address : address.substr(at + 3);
}

void paintStyle(const CardScene& scene) {
    switch (scene.config.cardStyle) {
    case CardStyle::clean: return CardStyles::paintClean(scene);
    case CardStyle::elegantShadow: return CardStyles::paintElegantShadow(scene);
    case CardStyle::glassmorphism: return CardStyles::paintGlassmorphism(scene);
    case CardStyle::neumorphism: return CardStyles::paintNeumorphism(scene);
    case CardStyle::gradientCard: return CardStyles::paintGradientCard(scene);
    case CardStyle::darkMode: return CardStyles::paintDarkMode(scene);
    case CardStyle::businessCard: return CardStyles::paintBusinessCard(scene);
    case CardStyle::artistic: return CardStyles::paintArtistic(scene);
    case CardStyle::minimal: return CardStyles::paintMinimal(scene);
    case CardStyle::luxury: return CardStyles::paintLuxury(scene);
    case CardStyle::techFuture: return CardStyles::paintTechFuture(scene);
    case CardStyle::warmPaper: return CardStyles::paintWarmPaper(scene);
    }
}

}  // namespace

void ShareImageView::paint(CardCanvas& canvas) const {
    canvas.painter().setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    canvas.painter().setLayoutDirection(Qt::LeftToRight);
    const QrCode code = qrCode(address);
    const std::string shortAddress = withoutScheme(address);
    const CardContent content = cardContent(config, localization);
    paintStyle({.canvas = canvas,
                .config = config,
                .content = content,
                .palette = colors(config.colorScheme),
                .code = code,
                .address = shortAddress});
}

}  // namespace quorvane
