#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QPainterPath>

// One tone, out of which parts rise and into which others sink; light comes from the upper left.
namespace quorvane::CardStyles {
namespace {

const QColor light(255, 255, 255);
const QColor shade(0xBC, 0xC6, 0xD4);
constexpr double left = 76;
constexpr double width = 448;
constexpr double rowPitch = 54;

QPainterPath roundedPath(const QRectF& rectangle, double radius) {
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

void paintRaised(const CardScene& scene, const QPainterPath& path, double depth) {
    paintGlow(scene.painter(), path, light, depth * 2.2, {-depth, -depth});
    paintGlow(scene.painter(), path, shade, depth * 2.2, {depth, depth});
    scene.painter().fillPath(path, toQt(scene.ground()));
}

void paintSunk(const CardScene& scene, const QPainterPath& path, double depth) {
    scene.painter().fillPath(path, toQt(scene.ground()));
    paintInnerGlow(scene.painter(), path, shade, depth * 2, {depth, depth});
    paintInnerGlow(scene.painter(), path, light, depth * 2, {-depth, -depth});
}

void paintDial(const CardScene& scene, const QPointF& centre) {
    QPainterPath rim;
    rim.addEllipse(centre, 82, 82);
    paintRaised(scene, rim, 8);
    QPainterPath well;
    well.addEllipse(centre, 64, 64);
    paintSunk(scene, well, 5);
    paintHours(scene, QRectF(centre.x() - 54, 0, 108, 0), centre.y() + 10,
               {.size = 46, .leastSize = 22, .weight = 700, .ink = scene.text(), .align = CardAlign::centre},
               {.size = 0, .ink = scene.text()});
    scene.canvas.text(QRectF(centre.x() - 50, centre.y() + 16, 100, 26), scene.content.unit,
                      {.size = 16, .weight = 500, .ink = scene.quietText(), .align = CardAlign::centre});
}

void paintRows(const CardScene& scene, double top, double end) {
    const FittingRows fitting = fittingRows(scene.content, end - top, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double y = top + fitting.top(i);
        paintNameAndValue(scene, QRectF(left, y, width, 28), rows[i], {.size = 16, .weight = 500, .ink = scene.text()},
                          {.size = 16, .weight = 500, .ink = scene.quietText()});
        const QRectF track(left, y + 31, width, 14);
        paintSunk(scene, roundedPath(track, 7), 2);
        paintBar(scene.painter(), track.adjusted(4, 3, -4, -3), rows[i].ofMost, chartColor(rows[i]), Qt::transparent);
    }
}

}  // namespace

void paintNeumorphism(const CardScene& scene) {
    scene.painter().fillRect(QRectF(0, 0, CardScene::width, CardScene::height), toQt(scene.ground()));
    paintRaised(scene, roundedPath(QRectF(44, 44, 512, 216), 30), 9);
    paintDial(scene, {156, 152});
    TextLook sentence = scene.sentence(25, 600);
    sentence.leastSize = 18;
    const QSizeF room(268, 184);
    const double height = CardCanvas::sizeOf(scene.content.message, sentence, room).height();
    scene.canvas.text(QRectF(QPointF(264, 152 - height / 2), room), scene.content.message, sentence);

    double y = 296;
    if (!scene.content.reason.empty()) {
        const TextLook reason = scene.reason(16);
        const double reasonHeight = CardCanvas::sizeOf(scene.content.reason, reason, {width, 70}).height();
        const QRectF well(44, y, 512, reasonHeight + 30);
        paintSunk(scene, roundedPath(well, 22), 4);
        scene.canvas.text(QRectF(left - 8, y + 15, width + 16, 70), scene.content.reason, reason);
        y = well.bottom() + 34;
    }
    const QRectF panel(44, y, 512, 738 - y);
    paintRaised(scene, roundedPath(panel, 30), 9);
    const TextLook head{.size = 16, .weight = 500, .ink = scene.quietText()};
    TextLook date = head;
    date.align = CardAlign::right;
    date.leastSize = 13;
    scene.canvas.text(QRectF(left + width * 0.35, y + 22, width * 0.65, 28), scene.content.date, date);
    y = paintTitle(scene, QRectF(left, y + 22, width * 0.34, 28), head);
    paintRows(scene, y + 8, panel.bottom() - 6);

    if (!scene.code.isEmpty()) {
        const double side = 2.0 * (scene.code.side + 8);
        paintRaised(scene, roundedPath(QRectF(544 - side - 4, 846 - side - 4, side + 8, side + 8), 12), 6);
    }
    paintFoot(scene, {.left = 46,
                      .right = 544,
                      .bottom = 846,
                      .ink = scene.text(),
                      .codeDark = scene.text(),
                      .codeLight = scene.ground()});
}

}  // namespace quorvane::CardStyles
