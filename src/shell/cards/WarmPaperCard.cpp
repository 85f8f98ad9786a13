#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <algorithm>

// A ruled sheet, held by a strip of tape and not quite straight; strokes of a marker.
namespace quorvane::CardStyles {
namespace {

constexpr QRectF sheet(42, 58, 516, 800);
constexpr double left = 116;
constexpr double width = 406;
constexpr double rowPitch = 38;
constexpr double tilt = -0.7;  // degrees

void paintSheet(const CardScene& scene) {
    QPainter& painter = scene.painter();
    QPainterPath path;
    path.addRect(sheet);
    paintGlow(painter, path, QColor(92, 66, 30, 110), 18, {3, 10});
    painter.fillPath(path, toQt(scene.ground()));
    painter.setPen(QPen(QColor(0xE2, 0xD3, 0xB4), 1.2));
    for (double y = sheet.top() + 86; y < sheet.bottom() - 20; y += 36)
        painter.drawLine(QPointF(sheet.left(), y), QPointF(sheet.right(), y));
    painter.setPen(QPen(QColor(0xDE, 0x9C, 0x8C), 1.6));
    painter.drawLine(QPointF(sheet.left() + 54, sheet.top()), QPointF(sheet.left() + 54, sheet.bottom()));
}

void paintGrain(QPainter& painter) {
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), QBrush(paperGrain()));
    painter.restore();
}

void paintTape(QPainter& painter) {
    painter.save();
    painter.translate(300, 54);
    painter.rotate(-2);
    painter.fillRect(QRectF(-72, -21, 144, 42), QColor(0xE3, 0xB4, 0x6E, 190));
    painter.restore();
}

/// A stroke as long as the row's part, with the wave of a hand.
void paintStroke(const CardScene& scene, const QRectF& room, const CardContent::Row& row) {
    const double length = std::max(18.0, room.width() * row.ofMost);
    const double y = room.center().y();
    QPainterPath stroke(QPointF(room.left(), y));
    stroke.cubicTo(QPointF(room.left() + length * 0.3, y - 7), QPointF(room.left() + length * 0.6, y + 7),
                   QPointF(room.left() + length, y - 2));
    QPainter& painter = scene.painter();
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(chartColor(row, mixed(row.color, colorFromRgb(0xFFFFFF), 0.12)), 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(stroke);
    painter.restore();
}

void paintRows(const CardScene& scene, double top) {
    constexpr double strokeWidth = 150;
    constexpr double valueWidth = 74;
    const FittingRows fitting = fittingRows(scene.content, 764 - top, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QRectF line(left, top + fitting.top(i), width, rowPitch);
        const double strokeLeft = line.right() - valueWidth - strokeWidth;
        paintStroke(scene, QRectF(strokeLeft, line.top(), strokeWidth - 8, line.height()), rows[i]);
        const TextLook words{.face = CardFace::serif,
                             .size = 16,
                             .leastSize = 12,
                             .weight = rows[i].isHighlighted ? 700 : 400,
                             .ink = scene.text(),
                             .align = CardAlign::left};
        TextLook value = words;
        value.align = CardAlign::right;
        scene.canvas.textInMiddle(QRectF(left, line.top(), strokeLeft - left - 14, rowPitch), rows[i].name, words);
        scene.canvas.textInMiddle(QRectF(line.right() - valueWidth, line.top(), valueWidth, rowPitch), rows[i].value,
                                  value);
    }
}

}  // namespace

void paintWarmPaper(const CardScene& scene) {
    QPainter& painter = scene.painter();
    QLinearGradient desk(0, 0, CardScene::width, CardScene::height);
    desk.setColorAt(0, QColor(0xEF, 0xE1, 0xC6));
    desk.setColorAt(1, QColor(0xE3, 0xD0, 0xAC));
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), desk);
    painter.save();
    painter.translate(300, 450);
    painter.rotate(tilt);
    painter.translate(-300, -450);
    paintSheet(scene);
    paintGrain(painter);
    paintTape(painter);
    const auto hand = [](double size, Color ink) {
        return TextLook{.face = CardFace::serif,
                        .size = size,
                        .leastSize = 13,
                        .ink = ink,
                        .align = CardAlign::left,
                        .isSlanted = true};
    };
    const Color quietInk = quiet(scene.text(), colorFromRgb(0xDCCBA9));  // also where a rule runs below
    scene.canvas.text(QRectF(left, 110, width, 28), scene.content.date, hand(16, quietInk));
    double y = scene.canvas.text(QRectF(left, 146, width - 4, 184), scene.content.message,
                                 scene.sentence(29, 700, CardFace::serif));
    TextLook reason = hand(16, quietInk);
    reason.align = CardAlign::start;
    reason.pitch = 1.5;
    reason.lines = 3;
    y = scene.canvas.text(QRectF(left, y + 10, width - 8, 76), scene.content.reason, reason);
    TextLook hours = hand(80, scene.accent());
    hours.weight = 700;
    hours.isSlanted = false;
    hours.leastSize = 40;
    paintHours(scene, QRectF(left, 0, width, 0), y + 84, hours, hand(26, quietInk));
    TextLook title = hand(16, quietInk);
    title.isSlanted = false;
    y = paintTitle(scene, QRectF(left, y + 110, width, 30), title);
    paintRows(scene, y + 4);
    TextLook name = hand(19, scene.text());
    name.weight = 700;
    scene.canvas.text(QRectF(left, 786, 200, 34), "Quorvane", name);
    paintCode(scene, {left + width, 836}, scene.text(), scene.ground());
    painter.restore();
}

}  // namespace quorvane::CardStyles
