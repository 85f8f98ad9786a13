// Draws the pictures of the documentation: the window in every state, over sample days, without a display.
#include "shell/chart/DayChartView.h"
#include "shell/look/Appearance.h"
#include "shell/look/Motion.h"
#include "shell/look/Theme.h"
#include "shell/support/WindowScene.h"
#include "timeline/DayTimelineGeometry.h"

#include <QApplication>
#include <QDir>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {
namespace {

struct Picture {
    const char* name;
    std::function<void(WindowScene&)> arrange;
    bool isEmpty = false;
};

DayChartView& dayChart(WindowScene& scene) {
    const auto areas = scene.window().findChildren<QAbstractScrollArea*>();
    const auto found = std::find_if(areas.begin(), areas.end(),
                                    [](auto* area) { return dynamic_cast<DayChartView*>(area) != nullptr; });
    return dynamic_cast<DayChartView&>(**found);
}

void scrollTo(WindowScene& scene, double hour) {
    auto& bar = *dayChart(scene).verticalScrollBar();
    bar.setValue(static_cast<int>(scene.chart().layout().yPosition(hour)));
    scene.settle();
}

/// Presses the middle of what was done from `hour` on.
void choose(WindowScene& scene, double hour) {
    auto& chart = scene.chart();
    chart.click({DayTimelineGeometry::gutterWidth + 20, chart.layout().yPosition(hour)}, 510);
    scene.settle();
}

std::vector<Picture> pictures() {
    return {
        {"timeline-day",
         [](WindowScene& scene) {
             choose(scene, 15.7);
             scrollTo(scene, 13);
         }},
        {"timeline-assign",
         [](WindowScene& scene) {
             scene.chart().selectTimeRange({11, 12.75});
             scene.settle();
             scrollTo(scene, 9);
         }},
        {"timeline-week", [](WindowScene& scene) { scene.chart().setViewMode(TimelineViewMode::week); }},
        {"timeline-month", [](WindowScene& scene) { scene.chart().setViewMode(TimelineViewMode::month); }},
        {"category",
         [](WindowScene& scene) {
             choose(scene, 15.7);
             dayChart(scene).categoryWanted.send(*scene.chart().selectedActivity());
         }},
        {"closing",
         [](WindowScene& scene) {
             scene.hasTray = false;
             scene.window().close();
         }},
        {"settings-pending", [](WindowScene& scene) { scene.window().openSettings(); }},
        {"about", [](WindowScene& scene) { scene.window().openAbout(); }},
        {"billing-pending", [](WindowScene& scene) { scene.window().chooseSection(MainSection::billing); }},
        {"timeline-empty", [](WindowScene& scene) { scene.chart().selectDate(scene.runLoop.now() + 86400s); }, true},
    };
}

bool draw(const Picture& picture, const std::string& language, bool isDark, QSize size, const QString& folder) {
    qputenv("LC_ALL", language == "zh" ? "zh_CN.UTF-8" : "en_GB.UTF-8");
    applyTheme(isDark ? Theme::dark() : Theme::light());
    WindowScene scene(language, picture.isEmpty);
    scene.open(size);
    scene.workUntil("16:58:30");
    picture.arrange(scene);
    scene.settle();
    const auto file =
        fmt::format("{}{}{}{}.png", picture.name, size.width() < 1000 ? fmt::format("-{}", size.width()) : "",
                    language == "en" ? "" : "-" + language, isDark ? "-dark" : "");
    const bool isSaved = scene.window().grab().save(folder + "/" + QString::fromStdString(file));
    if (!isSaved) fmt::print(stderr, "pictures: {} could not be written\n", file);
    return isSaved;
}

int drawAll(const QString& folder, const std::string& only) {
    Motion::setAllowed(false);
    bool isFine = QDir().mkpath(folder);
    for (const Picture& picture : pictures()) {
        if (!only.empty() && only != picture.name) continue;
        for (const bool isDark : {false, true})
            isFine &= draw(picture, "en", isDark, {1280, 832}, folder);
        isFine &= draw(picture, "en", false, {900, 640}, folder);
        isFine &= draw(picture, "zh", false, {1280, 832}, folder);
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
