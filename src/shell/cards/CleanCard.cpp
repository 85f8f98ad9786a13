#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

// White, set to the left, huge hours, one hairline.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 62;
constexpr double width = 476;
constexpr double rowsEnd = 762;
constexpr double rowPitch = 46;

void paintRows(const CardScene& scene, double top) {
    const FittingRows fitting = fittingRows(scene.content, rowsEnd - top, rowPitch);
    const auto& rows = fitting.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double y = top + fitting.top(i);
        paintNameAndValue(scene, QRectF(left, y, width, 28), rows[i], {.size = 17, .weight = 500, .ink = scene.text()},
                          {.size = 16, .weight = 500, .ink = scene.quietText()});
        paintBar(scene.painter(), QRectF(left, y + 30, width, 8), rows[i].ofMost, chartColor(rows[i]),
                 QColor(0xEE, 0xF1, 0xF5));
    }
}

}  // namespace

void paintClean(const CardScene& scene) {
    QPainter& painter = scene.painter();
    painter.fillRect(QRectF(0, 0, CardScene::width, CardScene::height), toQt(scene.ground()));
    scene.canvas.text(QRectF(left, 52, width, 30), scene.content.date,
                      {.size = 17, .leastSize = 13, .ink = scene.quietText(), .align = CardAlign::left});
    paintHours(scene, QRectF(left - 5, 0, width, 0), 196,
               {.size = 112, .leastSize = 60, .weight = 700, .ink = scene.text(), .spacing = -0.02},
               {.size = 40, .weight = 400, .ink = scene.quietText()});
    double y = scene.canvas.text(QRectF(left, 240, width - 40, 178), scene.content.message, scene.sentence(31, 600));
    y = scene.canvas.text(QRectF(left, y + 10, width, 74), scene.content.reason, scene.reason(17));
    y += 26;
    painter.fillRect(QRectF(left, std::round(y), width, 1), QColor(0xDE, 0xE2, 0xE8));
    y = paintTitle(scene, QRectF(left, y + 18, width, 30),
                   {.size = 16, .ink = scene.quietText(), .align = CardAlign::left});
    paintRows(scene, y + 8);
    paintFoot(scene, {.ink = scene.text(), .codeDark = scene.text(), .codeLight = scene.ground()});
}

}  // namespace quorvane::CardStyles
