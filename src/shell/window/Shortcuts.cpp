#include "shell/window/Shortcuts.h"

#include "shell/app/AppServices.h"
#include "shell/window/ActivityPage.h"
#include "shell/window/MainWindow.h"

#include <QKeySequence>
#include <QShortcut>
#include <functional>
#include <utility>

namespace quorvane::Shortcuts {
namespace {

using Act = std::function<void()>;

void on(QWidget& widget, const QKeySequence& keys, Act act) {
    auto* const shortcut = new QShortcut(keys, &widget);
    QObject::connect(shortcut, &QShortcut::activated, &widget, std::move(act));
}

/// A step along the line of reading: the left arrow goes forward where people read from right to left.
Act step(QWidget& widget, DayTimelineChart& chart, int direction) {
    return [&widget, &chart, direction] {
        chart.stepDate(widget.layoutDirection() == Qt::RightToLeft ? -direction : direction);
    };
}

void addSections(MainWindow& window) {
    for (const MainSection section : allMainSections) {
        const auto number = QString::number(static_cast<int>(section) + 1);
        on(window, QKeySequence("Ctrl+" + number), [&window, section] { window.goToSection(section); });
    }
}

/// Only while the timeline is shown, wherever the focus is.
void onTimeline(ActivityPage& page, const QKeySequence& keys, Act act) {
    on(*page.window(), keys, [&page, doIt = std::move(act)] {
        if (page.isVisible()) doIt();
    });
}

void addTimeline(ActivityPage& page, DayTimelineChart& chart) {
    constexpr std::pair<Qt::Key, TimelineViewMode> modes[] = {
        {Qt::Key_1, TimelineViewMode::day}, {Qt::Key_2, TimelineViewMode::week}, {Qt::Key_3, TimelineViewMode::month}};
    for (const auto& [key, mode] : modes)
        onTimeline(page, QKeySequence(Qt::ALT | key), [&page, shown = mode] { page.setMode(shown); });
    onTimeline(page, QKeySequence(Qt::ALT | Qt::Key_Left), step(page, chart, -1));
    onTimeline(page, QKeySequence(Qt::ALT | Qt::Key_Right), step(page, chart, 1));
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal})
        onTimeline(page, QKeySequence(Qt::CTRL | key), [&chart] { chart.zoomIn(); });
    onTimeline(page, QKeySequence(Qt::CTRL | Qt::Key_Minus), [&chart] { chart.zoomOut(); });
    onTimeline(page, QKeySequence(Qt::CTRL | Qt::Key_0), [&chart] { chart.resetZoom(); });
}

}  // namespace

void add(MainWindow& window, ActivityPage& page, AppServices& services, DayTimelineChart& chart) {
    addSections(window);
    on(window, QKeySequence("Ctrl+,"), [&window] { window.openSettings(); });
    on(window, QKeySequence("Ctrl+Shift+L"), [&window] { window.openLog(); });
    on(window, QKeySequence("F1"), [&window] { window.openAbout(); });
    on(window, QKeySequence("Ctrl+W"), [&window] { window.close(); });
    on(window, QKeySequence("Ctrl+Q"), [&services] { services.quit(); });
    on(window, QKeySequence("Ctrl+Shift+P"), [&services] { services.tracker.toggle(); });
    addTimeline(page, chart);
}

}  // namespace quorvane::Shortcuts
