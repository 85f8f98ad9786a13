#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QRadialGradient>

// Gold on black: a double frame with ornaments in its corners, serifs, dotted leaders.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 76;
constexpr double width = 448;
constexpr double rowPitch = 34;
constexpr Color darkGold = colorFromRgb(0xC49A54);
constexpr Color brightGold = colorFromRgb(0xF3DDA6);

QLinearGradient gold(double from, double to) {
    QLinearGradient gradient(from, 0, to, 60);
    gradient.setColorAt(0, toQt(darkGold));
    gradient.setColorAt(0.45, toQt(brightGold));
    gradient.setColorAt(1, toQt(darkGold));
    return gradient;
}

void paintCorner(QPainter& painter, double x, double y, double xSide, double ySide) {
    painter.save();
    painter.translate(x, y);
    painter.scale(xSide, ySide);
    painter.drawPolyline(QPolygonF{QPointF(0, 44), QPointF(0, 8), QPointF(8, 8), QPointF(8, 0), QPointF(44, 0)});
    painter.drawPolyline(QPolygonF{QPointF(6, 44), QPointF(6, 26), QPointF(26, 6), QPointF(44, 6)});
    painter.drawEllipse(QPointF(13, 13), 2.2, 2.2);
    painter.restore();
}

void paintFrame(const CardScene& scene) {
    QPainter& painter = scene.painter();
    const QRectF card(0, 0, CardScene::width, CardScene::height);
    QRadialGradient ground(card.center() - QPointF(0, 160), 620);
    ground.setColorAt(0, QColor(0x22, 0x1F, 0x1A));
    ground.setColorAt(1, QColor(0x0D, 0x0C, 0x0A));
    painter.fillRect(card, ground);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(gold(0, CardScene::width), 1.4));
    painter.drawRect(card.adjusted(26.5, 26.5, -26.5, -26.5));
    painter.setPen(QPen(toQt(darkGold, 0.6), 1));
    painter.drawRect(card.adjusted(34.5, 34.5, -34.5, -34.5));
    painter.setPen(QPen(gold(0, CardScene::width), 1.6));
    for (const double x : {42.0, 558.0})
        for (const double y : {42.0, 858.0})
            paintCorner(painter, x, y, x < 300 ? 1 : -1, y < 450 ? 1 : -1);
}

void paintDivider(QPainter& painter, double y) {
    painter.setPen(QPen(toQt(darkGold), 1.2));
    painter.drawLine(QPointF(212, y), QPointF(284, y));
    painter.drawLine(QPointF(316, y), QPointF(388, y));
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(brightGold));
    painter.drawPolygon(QPolygonF{QPointF(300, y - 6), QPointF(306, y), QPointF(300, y + 6), QPointF(294, y)});
}

void paintRow(const CardScene& scene, double y, const CardContent::Row& row) {
    const TextLook name{
        .face = CardFace::serif, .size = 17, .leastSize = 13, .ink = scene.text(), .align = CardAlign::left};
    TextLook value = name;
    value.ink = scene.accent();
    const QRectF line(left, y, width, rowPitch);
    paintNameAndValue(scene, line, row, name, value);
    // Dots lead the eye from the name to its hours.
    TextLook shownName = name;
    TextLook shownValue = value;
    if (row.isHighlighted) shownName.weight = shownValue.weight = 700;
    const double valueWidth = CardCanvas::sizeOf(row.value, shownValue, line.size()).width();
    const double sealRoom = row.isHighlighted ? name.size * 0.9 + 8 : 0;
    const double nameWidth =
        CardCanvas::sizeOf(row.name, shownName, {width - valueWidth - 12 - sealRoom, rowPitch}).width();
    const double from = left + nameWidth + sealRoom + 10;
    const double to = left + width - valueWidth - 10;
    if (to - from < 12) return;
    scene.painter().setPen(QPen(chartColor(row, darkGold), 1.3, Qt::DotLine));
    scene.painter().drawLine(QPointF(from, y + rowPitch * 0.68), QPointF(to, y + rowPitch * 0.68));
}

}  // namespace

void paintLuxury(const CardScene& scene) {
    paintFrame(scene);
    const auto centred = [](double size, Color ink) {
        return TextLook{.face = CardFace::serif, .size = size, .leastSize = 13, .ink = ink, .align = CardAlign::centre};
    };
    TextLook date = centred(15, scene.accent());
    date.spacing = 0.16;
    scene.canvas.text(QRectF(left + 20, 72, width - 40, 28),
                      QString::fromStdString(scene.content.date).toUpper().toStdString(), date);
    TextLook hours = centred(104, darkGold);
    hours.leastSize = 60;
    paintHours(scene, QRectF(left, 0, width, 0), 214, hours,
               {.face = CardFace::serif, .size = 30, .ink = scene.accent()}, gold(0, 170));
    paintDivider(scene.painter(), 246);
    TextLook sentence = scene.sentence(27, 400, CardFace::serif);
    sentence.align = CardAlign::centre;
    sentence.pitch = 1.42;
    double y = scene.canvas.text(QRectF(left, 268, width, 196), scene.content.message, sentence);
    TextLook reason = scene.reason(16, CardFace::serif);
    reason.ink = scene.accent();
    reason.align = CardAlign::centre;
    reason.isSlanted = true;
    reason.isBalanced = true;
    y = scene.canvas.text(QRectF(left + 10, y + 10, width - 20, 74), scene.content.reason, reason);
    y = paintTitle(scene, QRectF(left, y + 22, width, 30), centred(16, scene.accent())) + 4;
    const FittingRows fitting = fittingRows(scene.content, 744 - y, rowPitch);
    for (std::size_t i = 0; i < fitting.rows.size(); ++i)
        paintRow(scene, y + fitting.top(i), fitting.rows[i]);
    scene.canvas.text(
        QRectF(left + 6, 792, 200, 34), "Quorvane",
        {.face = CardFace::serif, .size = 19, .ink = brightGold, .spacing = 0.1, .align = CardAlign::left});
    paintCode(scene, {left + width - 6, 836}, colorFromRgb(0x1A1710), colorFromRgb(0xEBD59A), 4);
}

}  // namespace quorvane::CardStyles
