#include "Pictures.h"
#include "shell/chart/DayChartView.h"
#include "shell/support/Offscreen.h"
#include "timeline/DayTimelineGeometry.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScrollBar>

namespace quorvane {
namespace {

void scrollTo(WindowScene& scene, double hour) {
    auto& bar = *widgetBelow<DayChartView>(scene.window()).verticalScrollBar();
    bar.setValue(static_cast<int>(scene.chart().layout().yPosition(hour)));
    scene.settle();
}

/// Presses the middle of what was done from `hour` on.
void choose(WindowScene& scene, double hour) {
    auto& chart = scene.chart();
    chart.click({DayTimelineGeometry::gutterWidth + 20, chart.layout().yPosition(hour)}, 510);
    scene.settle();
}

}  // namespace

std::vector<Picture> timelinePictures() {
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
             widgetBelow<DayChartView>(scene.window()).categoryWanted.send(*scene.chart().selectedActivity());
         }},
        {"share",
         [](WindowScene& scene) {
             pressButton(scene, scene.services().localization.text("timeline_generate_share_card"));
             // The pictures come one after the other, a frame of the screen apart.
             QElapsedTimer timer;
             for (timer.start(); timer.elapsed() < 3000;)
                 QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
         }},
        {"closing",
         [](WindowScene& scene) {
             scene.hasTray = false;
             scene.window().close();
         }},
        {"timeline-away",
         [](WindowScene& scene) {
             scene.runLoop.playUntil("17:25:00");
             scene.desktop.pressKey();
             scene.workUntil("17:34:00");
             scrollTo(scene, 16);
         }},
        {"timeline-blind",
         [](WindowScene& scene) {
             scene.desktop.setForegroundChannel(
                 {.gives = platform::Sight::applications, .obstacle = platform::Obstacle::wayland});
             scene.runLoop.playFor(31s);
             scene.settle();
         },
         true},
        {"timeline-empty", [](WindowScene& scene) { scene.chart().selectDate(scene.runLoop.now() + 86400s); }, true},
    };
}

}  // namespace quorvane
