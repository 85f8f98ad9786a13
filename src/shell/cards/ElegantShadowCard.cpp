#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QPainterPath>

// One white sheet that floats on cool grey, words with serifs, a ring.
namespace quorvane::CardStyles {
namespace {

constexpr QRectF sheet(44, 44, 512, 812);
constexpr double left = 88;
constexpr double width = 424;

void paintSheet(QPainter& painter) {
    QLinearGradient ground(0, 0, 0, CardScene::height);
    ground.setColorAt(0, QColor(0xF3, 0xF2, 0xF7));
    ground.setColorAt(1, QColor(0xD9, 0xD6, 0xE3));
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), ground);
    QPainterPath path;
    path.addRoundedRect(sheet, 26, 26);
    paintGlow(painter, path, QColor(48, 38, 84, 70), 34, {0, 24});
    paintGlow(painter, path, QColor(48, 38, 84, 40), 6, {0, 3});
    painter.fillPath(path, Qt::white);
}

/// The ring with the hours in it. Returns where it ends.
double paintRingWithHours(const CardScene& scene, double top, double side) {
    const QRectF ring(300 - side / 2, top, side, side);
    QPainterPath disc;
    disc.addEllipse(ring);
    paintGlow(scene.painter(), disc, QColor(48, 38, 84, 30), 16, {0, 8});
    scene.painter().fillPath(disc, Qt::white);
    paintRing(scene, ring, side * 0.11, colorFromRgb(0xE9E7F0));
    const QRectF inside = ring.adjusted(side * 0.16, 0, -side * 0.16, 0);
    const double baseline = ring.center().y() + side * 0.07;
    paintHours(scene, inside, baseline,
               {.face = CardFace::serif,
                .size = side * 0.24,
                .leastSize = 24,
                .ink = scene.text(),
                .align = CardAlign::centre},
               {.size = 0, .ink = scene.text()});
    scene.canvas.text(QRectF(inside.left(), baseline + 6, inside.width(), 26), scene.content.unit,
                      {.size = 16, .ink = scene.quietText(), .align = CardAlign::centre});
    return ring.bottom();
}

}  // namespace

void paintElegantShadow(const CardScene& scene) {
    paintSheet(scene.painter());
    scene.canvas.text(
        QRectF(left, 80, width, 28), scene.content.date,
        {.size = 15, .leastSize = 13, .ink = scene.quietText(), .spacing = 0.08, .align = CardAlign::centre});
    TextLook sentence = scene.sentence(28, 400, CardFace::serif);
    sentence.align = CardAlign::centre;
    TextLook reason = scene.reason(16);
    reason.align = CardAlign::centre;
    reason.isBalanced = true;
    double y = scene.canvas.text(QRectF(left - 14, 116, width + 28, 160), scene.content.message, sentence);
    y = scene.canvas.text(QRectF(left, y + 10, width, 70), scene.content.reason, reason);
    const double side = std::clamp(590 - y - 24, 150.0, 236.0);
    y = paintRingWithHours(scene, y + 24, side);
    y = paintTitle(scene, QRectF(left, y + 20, width, 30),
                   {.size = 15, .ink = scene.quietText(), .align = CardAlign::centre});
    std::vector<QColor> dots;
    for (const CardContent::Row& row : scene.content.rows)
        dots.push_back(chartColor(row));
    paintLegend(scene, QRectF(left, y + 6, width, 740 - y), 29, {.size = 15, .ink = scene.text()},
                {.size = 14, .ink = scene.quietText()}, 5, dots);
    paintFoot(scene, {.left = left,
                      .right = left + width,
                      .bottom = 826,
                      .ink = scene.text(),
                      .codeDark = scene.text(),
                      .codeLight = scene.ground()});
}

}  // namespace quorvane::CardStyles
