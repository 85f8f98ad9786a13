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

void on(QWidget& widget, const QKeySequence& keys, Act act, Qt::ShortcutContext context = Qt::WindowShortcut) {
    auto* const shortcut = new QShortcut(keys, &widget);
    shortcut->setContext(context);
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
        on(window, QKeySequence("Ctrl+" + number), [&window, section] { window.chooseSection(section); });
    }
}

/// Only while the timeline is shown.
void addTimeline(ActivityPage& page, DayTimelineChart& chart) {
    constexpr auto here = Qt::WidgetWithChildrenShortcut;
    constexpr std::pair<Qt::Key, TimelineViewMode> modes[] = {
        {Qt::Key_1, TimelineViewMode::day}, {Qt::Key_2, TimelineViewMode::week}, {Qt::Key_3, TimelineViewMode::month}};
    for (const auto& [key, mode] : modes)
        on(
            page, QKeySequence(Qt::ALT | key), [&page, shown = mode] { page.setMode(shown); }, here);
    on(page, QKeySequence(Qt::ALT | Qt::Key_Left), step(page, chart, -1), here);
    on(page, QKeySequence(Qt::ALT | Qt::Key_Right), step(page, chart, 1), here);
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal})
        on(
            page, QKeySequence(Qt::CTRL | key), [&chart] { chart.zoomIn(); }, here);
    on(
        page, QKeySequence(Qt::CTRL | Qt::Key_Minus), [&chart] { chart.zoomOut(); }, here);
    on(
        page, QKeySequence(Qt::CTRL | Qt::Key_0), [&chart] { chart.resetZoom(); }, here);
}

}  // namespace

void add(MainWindow& window, ActivityPage& page, AppServices& services, DayTimelineChart& chart) {
    addSections(window);
    on(window, QKeySequence("Ctrl+,"), [&window] { window.openSettings(); });
    on(window, QKeySequence("F1"), [&window] { window.openAbout(); });
    on(window, QKeySequence("Ctrl+W"), [&window] { window.close(); });
    on(window, QKeySequence("Ctrl+Q"), [&services] { services.quit(); });
    on(window, QKeySequence("Ctrl+Shift+P"), [&services] { services.tracker.toggle(); });
    addTimeline(page, chart);
}

}  // namespace quorvane::Shortcuts
