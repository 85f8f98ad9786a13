#include "shell/look/Typography.h"

#include "shell/look/LookScene.h"

#include <QImage>
#include <QPainter>

namespace quorvane {
namespace {

TEST(TypographyTest, EveryDigitHasTheSameAdvance) {
    needApplication();
    for (const TypeRole role : {TypeRole::display, TypeRole::body, TypeRole::fixed}) {
        const QFont face = font(role);
        const double ones = figuresWidth(face, QStringLiteral("1,111.1 h"));
        for (const char* text : {"8,888.8 h", "4,070.9 h"}) {
            EXPECT_DOUBLE_EQ(figuresWidth(face, QLatin1String(text)), ones) << text;
        }
    }
}

TEST(TypographyTest, FiguresStandWhereTheAlignmentSays) {
    needApplication();
    const std::pair<int, bool> rows[] = {{Qt::AlignLeft | Qt::AlignVCenter, true},
                                         {Qt::AlignRight | Qt::AlignVCenter, false}};
    for (const auto& [alignment, isLeft] : rows) {
        QImage image(200, 40, QImage::Format_Grayscale8);
        image.fill(255);
        QPainter painter(&image);
        painter.setFont(font(TypeRole::body));
        EXPECT_NEAR(drawFigures(painter, image.rect(), alignment, QStringLiteral("8.8")),
                    figuresWidth(font(TypeRole::body), QStringLiteral("8.8")), 0.01);
        painter.end();
        QImage blank(100, 40, QImage::Format_Grayscale8);
        blank.fill(255);
        EXPECT_EQ(image.copy(0, 0, 100, 40) != blank, isLeft);
        EXPECT_EQ(image.copy(100, 0, 100, 40) != blank, !isLeft);
    }
}

}  // namespace
}  // namespace quorvane
