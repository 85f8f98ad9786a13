#include "shell/cards/CardEffects.h"
#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>

// Panes of frosted glass with white edges before a field of pale colours.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 78;
constexpr double width = 444;
constexpr double rowPitch = 47;
constexpr double frost = 0.58;

/// Pale enough that dark words can be read on it through the glass.
Color pale(Color color) {
    while (contrast(color, colorFromRgb(0x000000)) < 9.5)
        color = mixed(color, colorFromRgb(0xFFFFFF), 0.06);
    return color;
}

/// The field, in half the card's size: it is soft everywhere.
QImage colorField(const Palette& palette) {
    QImage field(CardScene::width / 2, CardScene::height / 2, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&field);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto tone = [&palette](std::size_t i) { return toQt(pale(palette[i])); };
    QLinearGradient ground(0, 0, field.width(), field.height());
    ground.setColorAt(0, tone(0));
    ground.setColorAt(0.55, tone(1));
    ground.setColorAt(1, tone(6));
    painter.fillRect(field.rect(), ground);
    painter.setPen(Qt::NoPen);
    const auto disc = [&](double x, double y, double radius, const QColor& color) {
        painter.setBrush(color);
        painter.drawEllipse(QPointF(x, y), radius, radius);
    };
    disc(60, 40, 120, tone(4));
    disc(310, 120, 105, tone(2));
    disc(175, 265, 90, tone(3));
    disc(20, 350, 110, tone(5));
    disc(285, 400, 95, tone(9));
    painter.end();
    blur(field, 20);
    return field;
}

/// Frosted glass: what is behind it, blurred, under white, with a white edge.
void paintPane(QPainter& painter, const QRectF& pane, const QImage& frosted) {
    QPainterPath path;
    path.addRoundedRect(pane, 24, 24);
    paintGlow(painter, path, QColor(60, 40, 110, 38), 22, {0, 12});
    painter.save();
    painter.setClipPath(path);
    painter.drawImage(QRectF(0, 0, CardScene::width, CardScene::height), frosted);
    painter.restore();
    painter.setBrush(QColor::fromRgbF(1, 1, 1, static_cast<float>(frost)));
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.85F), 1.6));
    painter.drawRoundedRect(pane.adjusted(0.8, 0.8, -0.8, -0.8), 23, 23);
}

/// The darkest that may lie below words.
Color paneGround(const Palette& palette) {
    Color darkest = colorFromRgb(0xFFFFFF);
    for (const Color color : palette)
        if (contrast(pale(color), colorFromRgb(0x000000)) < contrast(darkest, colorFromRgb(0x000000)))
            darkest = pale(color);
    return mixed(darkest, colorFromRgb(0xFFFFFF), frost);
}

}  // namespace

void paintGlassmorphism(const CardScene& scene) {
    QPainter& painter = scene.painter();
    const QImage field = colorField(scene.palette);
    QImage frosted = field;
    blur(frosted, 11);
    painter.drawImage(QRectF(0, 0, CardScene::width, CardScene::height), field);
    const Color quietInk = quiet(scene.text(), paneGround(scene.palette));

    // The words first decide how high their pane is.
    const TextLook sentence = scene.sentence(29, 600);
    TextLook reason = scene.reason(16);
    reason.ink = quietInk;
    const double sentenceHeight = CardCanvas::sizeOf(scene.content.message, sentence, {width, 186}).height();
    const double reasonHeight = CardCanvas::sizeOf(scene.content.reason, reason, {width, 70}).height();
    const double headEnd = 150 + sentenceHeight + (reasonHeight > 0 ? 10 + reasonHeight : 0) + 26;
    paintPane(painter, QRectF(44, 48, 512, headEnd - 48), frosted);
    const double rowsTop = headEnd + 26;
    paintPane(painter, QRectF(44, rowsTop, 512, 740 - rowsTop), frosted);
    paintPane(painter, QRectF(44, 766, 512, 92), frosted);

    scene.canvas.textInMiddle(QRectF(left, 84, width * 0.6, 44), scene.content.date,
                              {.size = 17, .leastSize = 13, .ink = quietInk, .align = CardAlign::left});
    paintHours(scene, QRectF(left + width * 0.5, 0, width * 0.5, 0), 122,
               {.size = 48, .leastSize = 26, .weight = 700, .ink = scene.text(), .align = CardAlign::right},
               {.size = 22, .weight = 500, .ink = scene.text()});
    const double y = scene.canvas.text(QRectF(left, 150, width, 186), scene.content.message, sentence);
    scene.canvas.text(QRectF(left, y + 10, width, 70), scene.content.reason, reason);

    const double top = paintTitle(scene, QRectF(left, rowsTop + 22, width, 30),
                                  {.size = 16, .ink = quietInk, .align = CardAlign::left}) +
                       8;
    const FittingRows fitting = fittingRows(scene.content, 736 - top, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double rowTop = top + fitting.top(i);
        paintNameAndValue(scene, QRectF(left, rowTop, width, 28), rows[i],
                          {.size = 16, .weight = 500, .ink = scene.text()},
                          {.size = 16, .weight = 500, .ink = scene.text()});
        paintBar(painter, QRectF(left, rowTop + 30, width, 9), rows[i].ofMost,
                 chartColor(rows[i], readable(rows[i].color, paneGround(scene.palette), 2.2)),
                 QColor(255, 255, 255, 170));
    }
    paintFoot(scene, {.left = left - 8,
                      .right = left + width + 18,
                      .bottom = 848,
                      .ink = scene.text(),
                      .codeDark = scene.text(),
                      .codeLight = colorFromRgb(0xFFFFFF),
                      .codeRadius = 10});
}

}  // namespace quorvane::CardStyles
