#include "shell/cards/CardParts.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr const char* productName = "Quorvane";
constexpr double moduleSide = 2;
constexpr int quietModules = 4;  // ISO/IEC 18004 asks for so many round the code
constexpr double fadedOpacity = 0.38;

/// A circle with a check beside the highlighted name.
void paintSeal(QPainter& painter, const QRectF& rectangle, const QColor& ink) {
    painter.save();
    painter.translate(rectangle.center());
    painter.scale(rectangle.width() / 16, rectangle.width() / 16);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawEllipse(QPointF(0, 0), 7, 7);
    painter.drawPolyline(QPolygonF{QPointF(-3.2, 0.3), QPointF(-0.9, 2.6), QPointF(3.4, -2.2)});
    painter.restore();
}

}  // namespace

void paintMark(QPainter& painter, const QRectF& rectangle) {
    painter.save();
    painter.translate(rectangle.topLeft());
    painter.scale(rectangle.width() / 32, rectangle.height() / 32);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1E, 0x3A, 0x8A));
    painter.drawRoundedRect(QRectF(0, 0, 32, 32), 8, 8);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x8F, 0xB0, 0xFF), 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(6.2, 6.2, 19.6, 19.6), 90 * 16, 270 * 16);
    painter.setPen(QPen(Qt::white, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(10.6, 21.4), QPointF(24.3, 7.7));
    painter.drawPolyline(QPolygonF{QPointF(18.2, 7.2), QPointF(24.8, 7.2), QPointF(24.8, 13.8)});
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(16, 16), 2.1, 2.1);
    painter.restore();
}

QRectF paintCode(const CardScene& scene, const QPointF& corner, Color dark, Color light, double radius) {
    const QrCode& code = scene.code;
    if (code.isEmpty()) return {};
    QPainter& painter = scene.painter();
    const double side = moduleSide * (code.side + 2 * quietModules);
    const QPointF end = painter.transform().map(corner);
    const QRectF rectangle(std::round(end.x() - side), std::round(end.y() - side), side, side);
    painter.save();
    painter.resetTransform();
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(light));
    painter.drawRoundedRect(rectangle, radius, radius);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QPointF first = rectangle.topLeft() + QPointF(quietModules, quietModules) * moduleSide;
    for (int y = 0; y < code.side; ++y)
        for (int x = 0; x < code.side; ++x)
            if (code.isDark(x, y))
                painter.fillRect(QRectF(first + QPointF(x, y) * moduleSide, QSizeF(moduleSide, moduleSide)),
                                 toQt(dark));
    painter.restore();
    return rectangle;
}

void paintFoot(const CardScene& scene, const FootLook& look) {
    constexpr double markSide = 30;
    const QRectF mark(look.left, look.bottom - markSide - 5, markSide, markSide);
    paintMark(scene.painter(), mark);
    scene.canvas.textInMiddle(QRectF(mark.right() + 10, mark.top(), 160, markSide), productName,
                              {.size = 17, .weight = 600, .ink = look.ink});
    paintCode(scene, {look.right, look.bottom}, look.codeDark, look.codeLight, look.codeRadius);
}

double paintHours(const CardScene& scene, const QRectF& room, double baseline, const TextLook& number,
                  const TextLook& unit, const std::optional<QBrush>& brush) {
    const double gap = unit.size > 0 ? unit.size * 0.3 : 0;
    const double unitWidth =
        unit.size > 0 ? CardCanvas::sizeOf(scene.content.unit, unit, {room.width(), 1000}).width() + 1 : 0;
    const double most = room.width() - gap - unitWidth;
    const double numberWidth = CardCanvas::sizeOf(scene.content.hours, number, {most, 1000}).width() + 1;
    double left = room.left();
    if (number.align == CardAlign::centre) left = room.center().x() - (numberWidth + gap + unitWidth) / 2;
    if (number.align == CardAlign::right) left = room.right() - numberWidth - gap - unitWidth;
    TextLook fromLeft = number;
    fromLeft.align = CardAlign::left;
    scene.canvas.textOnBaseline(QRectF(left, 0, numberWidth, 0), baseline, scene.content.hours, fromLeft, brush);
    if (unit.size > 0)
        scene.canvas.textOnBaseline(QRectF(left + numberWidth + gap, 0, unitWidth, 0), baseline, scene.content.unit,
                                    unit);
    return left + numberWidth + gap + unitWidth;
}

void paintNameAndValue(const CardScene& scene, const QRectF& rectangle, const CardContent::Row& row,
                       const TextLook& name, const TextLook& value) {
    constexpr double gap = 12;
    TextLook figures = value;
    figures.align = CardAlign::right;
    TextLook words = name;
    words.align = CardAlign::left;
    words.leastSize = std::max(12.0, name.size - 2);
    if (row.isHighlighted) figures.weight = words.weight = 700;
    const double figuresWidth = CardCanvas::sizeOf(row.value, figures, rectangle.size()).width();
    const double sealSide = row.isHighlighted ? name.size * 0.9 : 0;
    const double sealRoom = row.isHighlighted ? sealSide + 8 : 0;
    const QRectF room = rectangle.adjusted(0, 0, -figuresWidth - gap - sealRoom, 0);
    scene.canvas.textInMiddle(rectangle, row.value, figures);
    scene.canvas.textInMiddle(room, row.name, words);
    if (!row.isHighlighted) return;
    const double width = CardCanvas::sizeOf(row.name, words, room.size()).width();
    paintSeal(scene.painter(),
              QRectF(room.left() + width + 8, rectangle.center().y() - sealSide / 2, sealSide, sealSide),
              toQt(words.ink));
}

QColor chartColor(const CardContent::Row& row) {
    return chartColor(row, row.color);
}

QColor chartColor(const CardContent::Row& row, Color color) {
    return toQt(color, row.isFaded ? fadedOpacity : 1);
}

void paintBar(QPainter& painter, const QRectF& track, double part, const QColor& color, const QColor& trackColor) {
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(trackColor);
    painter.drawRoundedRect(track, radius, radius);
    const double width = std::max(track.height(), track.width() * part);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(track.topLeft(), QSizeF(width, track.height())), radius, radius);
}

void paintRing(const CardScene& scene, const QRectF& rectangle, double thickness, Color rest) {
    constexpr double whole = 360 * 16.0;  // Qt's sixteenths of a degree
    constexpr double gap = 1.6 * 16;
    QPainter& painter = scene.painter();
    const QRectF line = rectangle.adjusted(thickness / 2, thickness / 2, -thickness / 2, -thickness / 2);
    double at = 90 * 16;
    double left = 1;
    const auto arc = [&](double part, const QColor& color) {
        if (part <= 0) return;
        const bool isAll = part > 0.995;
        painter.setPen(QPen(color, thickness, Qt::SolidLine, Qt::FlatCap));
        const double span = std::max(16.0, part * whole - (isAll ? 0 : gap));
        painter.drawArc(line, static_cast<int>(std::lround(at - gap / 2)), -static_cast<int>(std::lround(span)));
        at -= part * whole;
        left -= part;
    };
    painter.setBrush(Qt::NoBrush);
    for (const CardContent::Row& row : scene.content.rows)
        arc(std::min(row.ofAll, left), chartColor(row));
    if (left > 0.004) arc(left, toQt(rest));
}

double paintLegend(const CardScene& scene, const QRectF& room, double pitch, const TextLook& name,
                   const TextLook& value, double dotRadius, const std::vector<QColor>& colors) {
    constexpr double gap = 32;
    constexpr double dot = 10;
    const double column = (room.width() - gap) / 2;
    const auto& rows = scene.content.rows;
    const std::size_t count = std::min(rows.size(), 2 * static_cast<std::size_t>(std::max(0.0, room.height() / pitch)));
    QPainter& painter = scene.painter();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t line = i / 2;
        const QRectF cell(room.left() + (i % 2 == 0 ? 0 : column + gap), room.top() + static_cast<double>(line) * pitch,
                          column, pitch);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors[i]);
        painter.drawRoundedRect(QRectF(cell.left(), cell.center().y() - dot / 2, dot, dot), dotRadius, dotRadius);
        paintNameAndValue(scene, cell.adjusted(dot + 8, 0, 0, 0), rows[i], name, value);
    }
    const std::size_t lines = (count + 1) / 2;
    return room.top() + static_cast<double>(lines) * pitch;
}

double paintTitle(const CardScene& scene, const QRectF& room, const TextLook& look) {
    double end = scene.canvas.text(room, scene.content.title, look);
    if (scene.content.note.empty()) return end;
    if (!scene.content.title.empty()) end += 8;
    return scene.canvas.text(QRectF(room.left(), end, room.width(), room.height()), scene.content.note, look);
}

}  // namespace quorvane
