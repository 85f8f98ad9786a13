#include "shell/cards/CardCanvas.h"

namespace quorvane {

double CardCanvas::text(const QRectF& box, const std::string& text, const TextLook& look,
                        const std::optional<QBrush>& brush) {
    const QString words = QString::fromStdString(text).simplified();
    if (words.isEmpty()) return box.top();
    const CardText made(words, look, box.size());
    place(made, box.topLeft(), box, words, look, brush);
    return box.top() + made.height();
}

void CardCanvas::textInMiddle(const QRectF& box, const std::string& text, const TextLook& look,
                              const std::optional<QBrush>& brush) {
    const QString words = QString::fromStdString(text).simplified();
    if (words.isEmpty()) return;
    const CardText made(words, look, box.size());
    place(made, box.topLeft() + QPointF(0, (box.height() - made.height()) / 2), box, words, look, brush);
}

double CardCanvas::textOnBaseline(const QRectF& box, double baseline, const std::string& text, const TextLook& look,
                                  const std::optional<QBrush>& brush) {
    const QString words = QString::fromStdString(text);
    const CardText made(words, look, QSizeF(box.width(), 2 * look.pitch * look.size));
    const QRectF room(box.left(), baseline - made.baseline(), box.width(), made.height());
    place(made, room.topLeft(), room, words, look, brush);
    return made.width();
}

QSizeF CardCanvas::sizeOf(const std::string& text, const TextLook& look, const QSizeF& box) {
    const QString words = QString::fromStdString(text).simplified();
    if (words.isEmpty()) return {0, 0};
    const CardText made(words, look, box);
    return {made.width(), made.height()};
}

void CardCanvas::place(const CardText& made, const QPointF& corner, const QRectF& box, const QString& text,
                       const TextLook& look, const std::optional<QBrush>& brush) {
    const QTransform toCard = painter_.transform();
    PlacedText placed{.text = text,
                      .box = toCard.mapRect(box),
                      .size = made.size(),
                      .weight = look.weight,
                      .ink = look.ink,
                      .isCut = made.isCut()};
    for (const QRectF& line : made.lineRects())
        placed.lines.push_back(toCard.mapRect(line.translated(corner)));
    placed_.push_back(std::move(placed));
    if (texts_ == Texts::leftOut) return;
    painter_.setPen(brush ? QPen(*brush, 0) : QPen(toQt(look.ink)));
    made.draw(painter_, corner);
}

}  // namespace quorvane
