#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QPainterPath>
#include <algorithm>

// Large flat shapes of the scheme, one stroke of a brush, words on strips of paper.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 50;
constexpr double width = 500;
constexpr double rowPitch = 31;

void paintQuarter(QPainter& painter, const QPointF& corner, double radius, const QRectF& quadrant, Color color) {
    painter.save();
    painter.setClipRect(quadrant);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(color));
    painter.drawEllipse(corner, radius, radius);
    painter.restore();
}

void paintShapes(const CardScene& scene) {
    QPainter& painter = scene.painter();
    const Palette& palette = scene.palette;
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), toQt(scene.ground()));
    paintQuarter(painter, {0, 0}, 230, {0, 0, 230, 230}, palette[0]);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(palette[4]));
    painter.drawEllipse(QPointF(470, 150), 190, 190);
    painter.setBrush(toQt(scene.ground()));
    painter.drawEllipse(QPointF(372, 250), 46, 46);
    painter.fillRect(QRectF(0, 300, 118, 120), toQt(palette[6]));
    paintQuarter(painter, {0, 420}, 118, {0, 420, 118, 118}, palette[7]);
    paintQuarter(painter, {600, 330}, 230, {370, 330, 230, 230}, palette[8]);
    QPainterPath stroke({40, 250});
    stroke.cubicTo({110, 190}, {160, 290}, {232, 252});
    stroke.cubicTo({300, 190}, {330, 250}, {392, 210});
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQt(readable(palette[0], scene.ground(), 3)), 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(stroke);
}

void paintDots(const CardScene& scene) {
    scene.painter().setPen(Qt::NoPen);
    scene.painter().setBrush(toQt(readable(scene.palette[0], scene.ground(), 3)));
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 5; ++x)
            scene.painter().drawEllipse(QPointF(506 + x * 18, 646 + y * 18), 3.4, 3.4);
}

/// The sentence, each line on a strip of paper. Returns where it ends.
double paintSentence(const CardScene& scene) {
    TextLook look = scene.sentence(36, 800);
    look.pitch = 1.42;
    const QRectF box(left, 352, width - 30, 196);
    const CardText made(QString::fromStdString(scene.content.message), look, box.size());
    for (const QRectF& line : made.lineRects())
        scene.painter().fillRect(line.translated(box.topLeft()).adjusted(-11, -2, 11, 2), toQt(scene.ground()));
    return scene.canvas.text(box, scene.content.message, look);
}

void paintRows(const CardScene& scene, double top, double end) {
    constexpr double widest = 0.44 * width;
    const FittingRows fitting = fittingRows(scene.content, end - top, rowPitch);
    for (std::size_t i = 0; i < fitting.rows.size(); ++i) {
        const CardContent::Row& row = fitting.rows[i];
        const QRectF bar(left, top + fitting.top(i) + 6, std::max(34.0, widest * row.ofMost), 20);
        paintBar(scene.painter(), bar, 1, chartColor(row), Qt::transparent);
        const TextLook name{.size = 16,
                            .leastSize = 12,
                            .weight = row.isHighlighted ? 800 : 600,
                            .ink = scene.text(),
                            .align = CardAlign::left};
        TextLook value = name;
        value.weight = row.isHighlighted ? 800 : 400;
        const double x = bar.right() + 12;
        const double valueWidth = CardCanvas::sizeOf(row.value, value, {200, 30}).width() + 1;
        const QRectF room(x, bar.top() - 4, left + width - x - valueWidth - 6 - 90, 30);
        const double nameWidth = CardCanvas::sizeOf(row.name, name, room.size()).width();
        scene.canvas.textInMiddle(room, row.name, name);
        scene.canvas.textInMiddle(QRectF(x + nameWidth + 7, room.top(), valueWidth, 30), row.value, value);
    }
}

}  // namespace

void paintArtistic(const CardScene& scene) {
    paintShapes(scene);
    scene.canvas.text(QRectF(40, 34, 150, 60), scene.content.date,
                      {.size = 16,
                       .leastSize = 12,
                       .weight = 700,
                       .ink = readable(scene.ground(), scene.palette[0], 4.5),
                       .align = CardAlign::left,
                       .lines = 2});
    const Color onDisc = readable(scene.text(), scene.palette[4], 4.5);
    paintHours(
        scene, QRectF(318, 0, 254, 0), 172,
        {.size = 122, .leastSize = 60, .weight = 800, .ink = onDisc, .spacing = -0.02, .align = CardAlign::centre},
        {.size = 40, .weight = 800, .ink = onDisc});
    double y = paintSentence(scene);
    TextLook reason = scene.reason(17);
    reason.ink = quiet(scene.text(), scene.ground());
    y = scene.canvas.text(QRectF(left, std::max(y + 10, 552.0), width - 66, 72), scene.content.reason, reason);
    y = paintTitle(scene, QRectF(left, y + 12, 400, 30),
                   {.size = 17, .weight = 700, .ink = scene.text(), .align = CardAlign::left});
    paintRows(scene, y + 2, 806);
    if (y < 730) paintDots(scene);
    paintFoot(scene, {.left = left,
                      .right = left + width + 8,
                      .bottom = 860,
                      .ink = scene.text(),
                      .codeDark = scene.text(),
                      .codeLight = scene.ground()});
}

}  // namespace quorvane::CardStyles
