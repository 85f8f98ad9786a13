#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>

// White on a gradient of the scheme's deep colours, in very large type.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 56;
constexpr double width = 488;
const Color white = colorFromRgb(0xFFFFFF);

void paintGround(const CardScene& scene) {
    const QRectF card(0, 0, CardScene::width, CardScene::height);
    QLinearGradient ground(card.topLeft(), card.bottomRight());
    ground.setColorAt(0, toQt(mixed(scene.ground(), colorFromRgb(0x000000), 0.18)));
    ground.setColorAt(0.5, toQt(scene.ground()));
    ground.setColorAt(1, toQt(scene.accent()));
    scene.painter().fillRect(card, ground);
    QRadialGradient shine(QPointF(560, 60), 250);
    shine.setColorAt(0, QColor(255, 255, 255, 40));
    shine.setColorAt(1, QColor(255, 255, 255, 0));
    scene.painter().fillRect(card, shine);
}

/// White, less of it with each application.
std::vector<QColor> whites(const std::vector<CardContent::Row>& rows) {
    std::vector<QColor> colors;
    double opacity = 1;
    for (const CardContent::Row& row : rows) {
        colors.push_back(chartColor(row, white));
        colors.back().setAlphaF(static_cast<float>(colors.back().alphaF() * opacity));
        opacity = std::max(0.3, opacity - 0.14);
    }
    return colors;
}

void paintShares(const CardScene& scene, const QRectF& track, const std::vector<QColor>& colors) {
    QPainter& painter = scene.painter();
    QPainterPath clip;
    clip.addRoundedRect(track, 9, 9);
    painter.save();
    painter.setClipPath(clip);
    painter.fillRect(track, QColor(255, 255, 255, 46));
    double x = track.left();
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const double end = std::min(track.right(), x + scene.content.rows[i].ofAll * track.width());
        const bool isLast = end > track.right() - 3;
        painter.fillRect(
            QRectF(QPointF(x, track.top()), QPointF(isLast ? end : std::max(x + 1, end - 3), track.bottom())),
            colors[i]);
        x = end;
    }
    painter.restore();
}

}  // namespace

void paintGradientCard(const CardScene& scene) {
    paintGround(scene);
    const auto plain = [](double size, int weight = 400) {
        return TextLook{.size = size, .weight = weight, .ink = white};
    };
    TextLook date = plain(17);
    date.align = CardAlign::left;
    date.leastSize = 13;
    scene.canvas.text(QRectF(left, 52, width, 30), scene.content.date, date);
    TextLook sentence = scene.sentence(40, 800);
    sentence.pitch = 1.24;
    double y = scene.canvas.text(QRectF(left, 92, width, 206), scene.content.message, sentence);
    TextLook reason = plain(18);
    reason.leastSize = 14;
    reason.lines = 3;
    reason.pitch = 1.45;
    y = scene.canvas.text(QRectF(left, y + 12, width, 80), scene.content.reason, reason);
    const double baseline = std::max(500.0, y + 122);
    paintHours(scene, QRectF(left - 6, 0, width, 0), baseline,
               {.size = 132, .leastSize = 70, .weight = 800, .ink = white, .spacing = -0.02},
               {.size = 36, .weight = 600, .ink = white});
    const auto colors = whites(scene.content.rows);
    if (!colors.empty()) paintShares(scene, QRectF(left, baseline + 36, width, 18), colors);
    TextLook title = plain(17, 500);
    title.align = CardAlign::left;
    y = paintTitle(scene, QRectF(left, baseline + (colors.empty() ? 36 : 68), width, 30), title);
    paintLegend(scene, QRectF(left, y + 4, width, 764 - y), 30, plain(17), plain(17), 3, colors);
    paintFoot(scene, {.left = left,
                      .right = left + width,
                      .bottom = 850,
                      .ink = white,
                      .codeDark = mixed(scene.ground(), colorFromRgb(0x000000), 0.35),
                      .codeLight = white,
                      .codeRadius = 10});
}

}  // namespace quorvane::CardStyles
