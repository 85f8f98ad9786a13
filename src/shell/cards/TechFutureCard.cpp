#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <numbers>

// Night blue with a grid: an instrument with ticks and a needle's arc, bars of segments, fixed pitch.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 58;
constexpr double width = 484;
constexpr double rowPitch = 48;
constexpr int tickCount = 72;
constexpr QPointF dial(183, 222);

void paintGround(const CardScene& scene) {
    QPainter& painter = scene.painter();
    const QRectF card(0, 0, CardScene::width, CardScene::height);
    QRadialGradient ground(QPointF(440, 120), 720);
    ground.setColorAt(0, QColor(0x0D, 0x2C, 0x48));
    ground.setColorAt(0.6, toQt(scene.ground()));
    ground.setColorAt(1, QColor(0x03, 0x0A, 0x12));
    painter.fillRect(card, ground);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int x = 29; x < CardScene::width; x += 30)
        painter.fillRect(QRect(x, 0, 1, CardScene::height), QColor(120, 190, 255, 12));
    for (int y = 29; y < CardScene::height; y += 30)
        painter.fillRect(QRect(0, y, CardScene::width, 1), QColor(120, 190, 255, 12));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQt(scene.accent()), 2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    for (const double x : {32.0, 568.0})
        for (const double y : {28.0, 872.0}) {
            const double inX = x < 300 ? 28 : -28;
            const double inY = y < 450 ? 28 : -28;
            painter.drawPolyline(QPolygonF{QPointF(x, y + inY), QPointF(x, y), QPointF(x + inX, y)});
        }
}

/// The part of the application that the card is about.
double topShare(const CardScene& scene) {
    return scene.config.topApp ? std::clamp(scene.config.topApp->percentage / 100, 0.0, 1.0) : 0;
}

void paintDial(const CardScene& scene) {
    QPainter& painter = scene.painter();
    const double share = topShare(scene);
    const QColor bright = toQt(scene.accent());
    const QColor faint = toQt(scene.accent(), 0.3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faint, 1));
    painter.drawEllipse(dial, 132, 132);
    painter.drawEllipse(dial, 98, 98);
    for (int i = 0; i < tickCount; ++i) {
        const double part = static_cast<double>(i) / tickCount;
        const double angle = 2 * std::numbers::pi * part;
        const QPointF out(std::sin(angle), -std::cos(angle));
        const bool isLong = i % 18 == 0;
        painter.setPen(QPen(part < share ? bright : QColor(140, 175, 200, 90), isLong ? 2 : 1.6));
        painter.drawLine(dial + out * (isLong ? 110 : 114), dial + out * 124);
    }
    const QRectF line(dial.x() - 98, dial.y() - 98, 196, 196);
    const int span = -static_cast<int>(std::lround(share * 360 * 16));
    if (span == 0) return;
    QPainterPath arc;
    arc.arcMoveTo(line, 90);
    arc.arcTo(line, 90, span / 16.0);
    QPainterPathStroker stroker;
    stroker.setWidth(5);
    const QPainterPath stroke = stroker.createStroke(arc);
    paintGlow(painter, stroke, toQt(scene.accent(), 0.55), 9, {0, 0});
    painter.fillPath(stroke, bright);
}

void paintFigures(const CardScene& scene) {
    const TextLook number{.face = CardFace::fixed,
                          .size = 62,
                          .leastSize = 30,
                          .weight = 700,
                          .ink = scene.text(),
                          .align = CardAlign::centre};
    QPainterPath behind;
    behind.addEllipse(dial, 52, 22);
    paintGlow(scene.painter(), behind, toQt(scene.accent(), 0.2), 18, {0, 0});
    paintHours(scene, QRectF(dial.x() - 76, 0, 152, 0), dial.y() + 18, number, {.size = 0, .ink = scene.text()});
    scene.canvas.text(QRectF(dial.x() - 60, dial.y() + 26, 120, 26), scene.content.unit,
                      {.face = CardFace::fixed, .size = 16, .ink = scene.accent(), .align = CardAlign::centre});
}

void paintSegments(const CardScene& scene, const QRectF& track, const CardContent::Row& row) {
    constexpr int count = 32;
    const double step = track.width() / count;
    const int lit = std::max(1, static_cast<int>(std::lround(row.ofMost * count)));
    const QColor color = chartColor(row, readable(row.color, scene.ground(), 4));
    for (int i = 0; i < count; ++i)
        scene.painter().fillRect(QRectF(track.left() + i * step, track.top(), step - 3, track.height()),
                                 i < lit ? color : QColor(120, 170, 210, 34));
}

}  // namespace

void paintTechFuture(const CardScene& scene) {
    paintGround(scene);
    const TextLook label{.face = CardFace::fixed, .size = 15, .ink = scene.accent()};
    TextLook name = label;
    name.align = CardAlign::right;
    scene.canvas.text(QRectF(left, 52, 240, 26), scene.content.isoDate, label);
    scene.canvas.text(QRectF(left + 244, 52, 240, 26), "QUORVANE", name);
    paintDial(scene);
    paintFigures(scene);
    TextLook sentence = scene.sentence(25, 600);
    sentence.leastSize = 18;
    sentence.lines = 7;
    sentence.pitch = 1.36;
    sentence.isBalanced = false;
    const QSizeF room(206, 256);
    const double height = CardCanvas::sizeOf(scene.content.message, sentence, room).height();
    scene.canvas.text(QRectF(QPointF(340, dial.y() - height / 2), room), scene.content.message, sentence);

    double y = 376;
    if (!scene.content.reason.empty()) {
        const TextLook reason = scene.reason(15, CardFace::fixed);
        const double end = scene.canvas.text(QRectF(left + 16, y + 2, width - 16, 68), scene.content.reason, reason);
        scene.painter().fillRect(QRectF(left, y, 3, end - y + 2), toQt(scene.accent()));
        y = end + 22;
    }
    TextLook title = label;
    title.size = 16;
    CardContent marked = scene.content;
    if (!marked.title.empty()) marked.title = "// " + marked.title;
    const CardScene withMark{.canvas = scene.canvas,
                             .config = scene.config,
                             .content = marked,
                             .palette = scene.palette,
                             .code = scene.code,
                             .address = scene.address};
    y = paintTitle(withMark, QRectF(left, y, width, 30), title) + 4;
    const FittingRows fitting = fittingRows(scene.content, 768 - y, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double top = y + fitting.top(i);
        paintNameAndValue(scene, QRectF(left, top, width, 28), rows[i],
                          {.face = CardFace::fixed, .size = 15, .ink = scene.text()},
                          {.face = CardFace::fixed, .size = 15, .ink = scene.quietText()});
        paintSegments(scene, QRectF(left, top + 29, width + 3, 9), rows[i]);
    }
    paintFoot(scene, {.left = left,
                      .right = left + width,
                      .bottom = 854,
                      .ink = scene.text(),
                      .codeDark = scene.ground(),
                      .codeLight = colorFromRgb(0xC9F3FA),
                      .codeRadius = 2});
}

}  // namespace quorvane::CardStyles
