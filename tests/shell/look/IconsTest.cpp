#include "shell/look/Icons.h"

#include "shell/look/LookScene.h"
#include "shell/look/Theme.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <set>

namespace quorvane {
namespace {

/// The colours of the pixels that are covered in whole.
std::set<QRgb> solidColors(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) == 255) colors.insert(image.pixel(x, y));
        }
    }
    return colors;
}

TEST(IconsTest, EveryIconIsDrawnInTheInkAskedFor) {
    needApplication();
    const QStringList names = QDir(QStringLiteral(":/icons")).entryList();
    EXPECT_GT(names.size(), 60);
    const QColor ink(200, 30, 90);
    for (const QString& file : names) {
        SCOPED_TRACE(qPrintable(file));
        const QPixmap pixmap = iconPixmap(file.chopped(4), ink, 96, 2, QColor(1, 2, 3));
        EXPECT_EQ(pixmap.size(), QSize(192, 192));
        const std::set<QRgb> colors = solidColors(pixmap);
        if (file == QLatin1String("quorvane.svg")) {  // the mark keeps its own colours
            EXPECT_EQ(colors.count(ink.rgb()), 0U);
        } else {
            EXPECT_EQ(colors.count(ink.rgb()), 1U);
            EXPECT_EQ(colors.count(QColor(0, 0, 1).rgb()), 0U);
        }
    }
}

TEST(IconsTest, AMenusIconFollowsTheTheme) {
    needApplication();
    const QIcon trash = icon(QStringLiteral("trash"));
    for (const Theme& each : {Theme::light(), Theme::dark()}) {
        applyTheme(each);
        EXPECT_EQ(solidColors(trash.pixmap(96, 96)).count(each.text.rgb()), 1U);
    }
}

TEST(IconsTest, OnlyIconsThatPointAreMirrored) {
    const std::pair<const char*, bool> rows[] = {{"left", true},     {"right", true},  {"enter", true},
                                                 {"history", false}, {"check", false}, {"quorvane", false}};
    for (const auto& [name, isDirectional] : rows) {
        EXPECT_EQ(isDirectionalIcon(QLatin1String(name)), isDirectional) << name;
    }
}

}  // namespace
}  // namespace quorvane
