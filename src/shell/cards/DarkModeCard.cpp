#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

// Nearly black, with panels a little lighter and the hours in a light colour.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 74;
constexpr double width = 452;
constexpr double rowPitch = 42;
constexpr Color night = colorFromRgb(0x0B0E11);

void paintPanel(const CardScene& scene, const QRectF& panel) {
    scene.painter().setBrush(toQt(scene.ground()));
    scene.painter().setPen(QPen(QColor(0x2A, 0x31, 0x38), 1));
    scene.painter().drawRoundedRect(panel.adjusted(0.5, 0.5, -0.5, -0.5), 22, 22);
}

/// The rows in colours that can be told from the panel: those of the scheme that can't are passed over.
std::vector<CardContent::Row> brightRows(const CardScene& scene) {
    std::vector<Color> bright;
    for (const Color color : scene.palette)
        if (contrast(color, scene.ground()) >= 3) bright.push_back(color);
    std::vector<CardContent::Row> rows = scene.content.rows;
    for (std::size_t i = 0; i < rows.size() && !bright.empty(); ++i)
        rows[i].color = bright[i % bright.size()];
    return rows;
}

void paintRows(const CardScene& scene, double top, double end) {
    const FittingRows fitting = fittingRows(scene.content, end - top, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double y = top + fitting.top(i);
        paintNameAndValue(scene, QRectF(left, y, width, 26), rows[i], {.size = 16, .weight = 500, .ink = scene.text()},
                          {.size = 16, .ink = scene.quietText()});
        paintBar(scene.painter(), QRectF(left, y + 28, width, 6), rows[i].ofMost, chartColor(rows[i]),
                 QColor(0x2A, 0x30, 0x36));
    }
}

void paintBright(const CardScene& scene) {
    QPainter& painter = scene.painter();
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), toQt(night));
    scene.canvas.text(QRectF(44, 38, 470, 28), scene.content.date,
                      {.size = 16, .leastSize = 13, .ink = quiet(scene.text(), night), .align = CardAlign::left});
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(scene.accent()));
    painter.drawEllipse(QPointF(551, 50), 5, 5);

    const TextLook sentence = scene.sentence(28, 600);
    const TextLook reason = scene.reason(16);
    const double sentenceHeight = CardCanvas::sizeOf(scene.content.message, sentence, {width, 180}).height();
    const double reasonHeight = CardCanvas::sizeOf(scene.content.reason, reason, {width, 70}).height();
    const QRectF words(44, 82, 512, 26 + sentenceHeight + (reasonHeight > 0 ? 10 + reasonHeight : 0) + 26);
    paintPanel(scene, words);
    const double y = scene.canvas.text(QRectF(left, 108, width, 180), scene.content.message, sentence);
    scene.canvas.text(QRectF(left, y + 10, width, 70), scene.content.reason, reason);

    const QRectF hours(44, words.bottom() + 16, 512, 148);
    paintPanel(scene, hours);
    paintHours(scene, QRectF(left - 4, 0, 310, 0), hours.center().y() + 32,
               {.size = 90, .leastSize = 50, .weight = 700, .ink = scene.accent(), .spacing = -0.02},
               {.size = 34, .ink = scene.quietText()});
    if (!scene.content.rows.empty())
        paintRing(scene, QRectF(left + width - 112, hours.center().y() - 56, 112, 112), 17, colorFromRgb(0x2A3036));

    const QRectF list(44, hours.bottom() + 16, 512, 760 - hours.bottom() - 16);
    paintPanel(scene, list);
    const double top = paintTitle(scene, QRectF(left, list.top() + 18, width, 28),
                                  {.size = 15, .ink = scene.quietText(), .align = CardAlign::left});
    paintRows(scene, top + 6, list.bottom() - 4);
    const Color paper = colorFromRgb(0xECEFF2);
    paintFoot(scene, {.left = 44,
                      .right = 556,
                      .bottom = 858,
                      .ink = scene.text(),
                      .codeDark = night,
                      .codeLight = paper,
                      .codeRadius = 8});
}

}  // namespace

void paintDarkMode(const CardScene& scene) {
    CardContent content = scene.content;
    content.rows = brightRows(scene);
    paintBright({.canvas = scene.canvas,
                 .config = scene.config,
                 .content = content,
                 .palette = scene.palette,
                 .code = scene.code,
                 .address = scene.address});
}

}  // namespace quorvane::CardStyles
