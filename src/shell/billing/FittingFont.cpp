#include "shell/billing/FittingFont.h"

#include "shell/look/Typography.h"

namespace quorvane {

QFont fittingFont(QFont font, const QString& number, double width) {
    for (int size = font.pixelSize(); size > 1 && figuresWidth(font, number) > width; --size)
        font.setPixelSize(size);
    return font;
}

}  // namespace quorvane
