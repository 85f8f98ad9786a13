// Draws the pictures of the documentation: every screen over sample days, without a display.
#include "Pictures.h"
#include "shell/look/Appearance.h"
#include "shell/look/Motion.h"
#include "shell/look/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLocale>
#include <cstdio>
#include <fmt/format.h>
#include <stdexcept>

namespace quorvane {

void pressButton(WindowScene& scene, const std::string& text) {
    for (auto* const button : scene.window().findChildren<QAbstractButton*>()) {
        const bool isIt = button->text().toStdString() == text || button->accessibleName().toStdString() == text;
        if (!isIt || !button->isVisible()) continue;
        button->click();
        return scene.settle();
    }
    throw std::runtime_error("no button is called " + text);
}

void showSection(WindowScene& scene, MainSection section) {
    scene.window().chooseSection(section);
    scene.settle();
}

namespace {

/// How a picture is taken.
struct Manner {
    std::string language = "en";
    bool isDark = false;
    bool isMirrored = false;
    QSize size{1280, 832};
};

std::string fileName(const std::string& name, const Manner& manner) {
    return fmt::format("{}{}{}{}{}.png", name,
                       manner.size.width() < 1000 ? fmt::format("-{}", manner.size.width()) : "",
                       manner.language == "en" ? "" : "-" + manner.language, manner.isMirrored ? "-rtl" : "",
                       manner.isDark ? "-dark" : "");
}

bool draw(const Picture& picture, const Manner& manner, const QString& folder) {
    const char* const locale = manner.language == "zh" ? "zh_CN.UTF-8" : "en_GB.UTF-8";
    qputenv("LC_ALL", locale);
    QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
    QGuiApplication::setLayoutDirection(manner.isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
    applyTheme(manner.isDark ? Theme::dark() : Theme::light());
    WindowScene scene(manner.language, picture.isEmpty, {}, picture.hasCloud);
    scene.open(manner.size);
    scene.workUntil("16:58:30");
    picture.arrange(scene);
    scene.settle();
    QWidget* const window = picture.window ? picture.window() : &scene.window();
    const auto file = fileName(picture.name, manner);
    const bool isSaved = window->grab().save(folder + "/" + QString::fromStdString(file));
    if (!isSaved) fmt::print(stderr, "pictures: {} could not be written\n", file);
    return isSaved;
}

int drawAll(const QString& folder, const std::string& only) {
    Motion::setAllowed(false);
    bool isFine = QDir().mkpath(folder);
    for (const auto& pictures :
         {timelinePictures(), billingPictures(), otherPictures(), cloudPictures(), kitPictures()})
        for (const Picture& picture : pictures) {
            if (!only.empty() && only != picture.name) continue;
            isFine &= draw(picture, {}, folder);
            isFine &= draw(picture, {.isDark = true}, folder);
            isFine &= draw(picture, {.size = {900, 640}}, folder);
            isFine &= draw(picture, {.language = "zh"}, folder);
            if (picture.alsoMirrored) isFine &= draw(picture, {.isMirrored = true}, folder);
        }
    return isFine ? 0 : 1;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc < 2 || argc > 3) {
        fmt::print(stderr, "usage: quorvane_pictures FOLDER [NAME]\n");
        return 2;
    }
    return quorvane::drawAll(QString::fromLocal8Bit(argv[1]), argc == 3 ? argv[2] : "");
}
