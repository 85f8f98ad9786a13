#include "shell/cards/CardParts.h"
#include "shell/cards/CardStyles.h"

#include <algorithm>

// Nearly nothing: thin hours, one line, air.
namespace quorvane::CardStyles {
namespace {

constexpr double left = 72;
constexpr double width = 456;
constexpr double rowPitch = 21;

/// One line of 3 pixels, its parts the shares.
void paintLine(const CardScene& scene, double top) {
    double x = left;
    for (const CardContent::Row& row : scene.content.rows) {
        const double end = std::min(left + width, x + row.ofAll * width);
        scene.painter().fillRect(QRectF(x, top, std::max(1.0, end - x - 3), 3), chartColor(row));
        x = end;
    }
    if (x < left + width - 1) scene.painter().fillRect(QRectF(x, top, left + width - x, 3), QColor(0xDD, 0xDD, 0xDA));
}

}  // namespace

void paintMinimal(const CardScene& scene) {
    scene.painter().fillRect(QRectF(0, 0, CardScene::width, CardScene::height), toQt(scene.ground()));
    scene.canvas.text(QRectF(left, 72, width, 28), scene.content.date,
                      {.size = 15, .leastSize = 13, .ink = scene.quietText(), .align = CardAlign::left});
    paintHours(scene, QRectF(left - 12, 0, width + 12, 0), 346,
               {.size = 210, .leastSize = 120, .weight = 200, .ink = scene.text(), .spacing = -0.04},
               {.size = 0, .ink = scene.text()});
    scene.canvas.text(QRectF(left, 372, width, 26), scene.content.unit,
                      {.size = 16, .ink = scene.quietText(), .align = CardAlign::left});
    TextLook sentence = scene.sentence(23, 400);
    sentence.pitch = 1.45;
    const double y = scene.canvas.text(QRectF(left, 444, 400, 152), scene.content.message, sentence);
    TextLook reason = scene.reason(15);
    scene.canvas.text(QRectF(left, y + 8, 400, 64), scene.content.reason, reason);

    constexpr double line = 694;
    paintLine(scene, line);
    double top = paintTitle(scene, QRectF(left, line + 14, 280, 26),
                            {.size = 14, .ink = scene.quietText(), .align = CardAlign::left}) +
                 2;
    for (const CardContent::Row& row : fittingRows(scene.content, 3 * rowPitch, rowPitch).rows) {
        paintNameAndValue(scene, QRectF(left, top, 210, rowPitch), row, {.size = 15, .ink = scene.text()},
                          {.size = 15, .ink = scene.quietText()});
        top += rowPitch;
    }
    scene.canvas.text(QRectF(left, 826, 200, 26), "Quorvane",
                      {.size = 15, .ink = scene.text(), .align = CardAlign::left});
    paintCode(scene, {left + width + 8, 850}, scene.text(), scene.ground());
}

}  // namespace quorvane::CardStyles
