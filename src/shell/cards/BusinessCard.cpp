#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QPainterPath>

// Two cards on slate, in the proportions of cards that people hand over: a letterhead and a table.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 86;
constexpr double width = 440;
constexpr double rowPitch = 36;

void paintCard(const CardScene& scene, const QRectF& card) {
    QPainterPath path;
    path.addRoundedRect(card, 6, 6);
    paintGlow(scene.painter(), path, QColor(0, 0, 0, 110), 22, {0, 12});
    paintGlow(scene.painter(), path, QColor(0, 0, 0, 70), 4, {0, 2});
    scene.painter().fillPath(path, toQt(scene.ground()));
}

void paintLetterhead(const CardScene& scene, const QRectF& card) {
    QPainter& painter = scene.painter();
    paintCard(scene, card);
    QPainterPath band;
    band.addRoundedRect(card, 6, 6);
    painter.save();
    painter.setClipRect(QRectF(card.left(), card.top(), 14, card.height()));
    painter.fillPath(band, toQt(scene.accent()));
    painter.restore();
    paintMark(painter, QRectF(left, card.top() + 34, 34, 34));
    scene.canvas.textInMiddle(QRectF(left + 46, card.top() + 34, 160, 34), "Quorvane",
                              {.size = 19, .weight = 600, .ink = scene.text()});
    scene.canvas.textInMiddle(QRectF(left + 206, card.top() + 34, width - 206, 34), scene.content.date,
                              {.size = 15, .leastSize = 13, .ink = scene.quietText(), .align = CardAlign::right});
    TextLook sentence = scene.sentence(25, 500);
    sentence.leastSize = 18;
    scene.canvas.text(QRectF(left, card.top() + 92, width, 132), scene.content.message, sentence);
    if (scene.content.reason.empty()) return;
    const TextLook reason{.size = 15, .leastSize = 13, .ink = scene.quietText(), .pitch = 1.35, .lines = 3};
    const double height = CardCanvas::sizeOf(scene.content.reason, reason, {width, 62}).height();
    const double top = card.bottom() - 24 - height;
    painter.fillRect(QRectF(left, top - 12, 56, 2), toQt(scene.accent()));
    scene.canvas.text(QRectF(left, top, width, 62), scene.content.reason, reason);
}

void paintTable(const CardScene& scene, const QRectF& card) {
    QPainter& painter = scene.painter();
    paintCard(scene, card);
    constexpr double start = 74;
    const double end = card.right() - 34;
    const double head = card.top() + 54;
    paintHours(scene, QRectF(end - 200, 0, 200, 0), head,
               {.size = 30, .leastSize = 20, .weight = 600, .ink = scene.accent(), .align = CardAlign::right},
               {.size = 26, .weight = 600, .ink = scene.accent()});
    const bool hasRows = !scene.content.rows.empty();
    const std::string& title = scene.content.title.empty() ? scene.content.note : scene.content.title;
    scene.canvas.textInMiddle(QRectF(start, head - 30, 230, 36), title,
                              {.size = 17, .weight = 700, .ink = scene.text()});
    painter.fillRect(QRectF(start, head + 16, end - start, 2), toQt(scene.accent()));
    const double top = head + 20;
    const FittingRows fitting = fittingRows(scene.content, card.bottom() - 94 - top, rowPitch);
    for (std::size_t i = 0; i < fitting.rows.size(); ++i) {
        const CardContent::Row& row = fitting.rows[i];
        const QRectF line(start, top + fitting.top(i), end - start, fitting.pitch);
        painter.fillRect(QRectF(start, line.center().y() - 10, 4, 20), chartColor(row));
        paintNameAndValue(scene, line.adjusted(16, 0, 0, 0), row, {.size = 16, .ink = scene.text()},
                          {.size = 16, .ink = scene.text()});
        painter.fillRect(QRectF(start, line.bottom() - 1, line.width(), 1), QColor(0xDF, 0xE2, 0xE6));
    }
    if (!hasRows && !scene.content.title.empty())
        scene.canvas.text(QRectF(start, top + 10, end - start, 30), scene.content.note,
                          {.size = 16, .ink = scene.quietText()});
    scene.canvas.text(QRectF(start, card.bottom() - 44, 300, 24), scene.address,
                      {.size = 14, .leastSize = 12, .ink = scene.quietText(), .align = CardAlign::left});
    paintCode(scene, {end + 8, card.bottom() - 16}, scene.text(), scene.ground());
}

}  // namespace

void paintBusinessCard(const CardScene& scene) {
    QLinearGradient slate(0, 0, 0, CardScene::height);
    slate.setColorAt(0, QColor(0x3D, 0x46, 0x53));
    slate.setColorAt(1, QColor(0x2A, 0x31, 0x3B));
    scene.painter().fillRect(QRectF(0, 0, CardScene::width, CardScene::height), slate);
    paintLetterhead(scene, QRectF(40, 64, 520, 325));
    paintTable(scene, QRectF(40, 428, 520, 408));
}

}  // namespace quorvane::CardStyles
