#include "base/TimeText.h"
#include "shell/chart/DayChartParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Typography.h"

#include <QMenu>

namespace quorvane {
namespace {

/// What is done from a menu looks the block up again: the day may have gone on while it stood open.
void addBlockActions(QMenu& menu, DayChartView::Parts& parts) {
    auto* category =
        menu.addAction(icon("tag"), qt(parts.localization.text("ui_category_and_tags")) + QString::fromUtf8("…"));
    QObject::connect(category, &QAction::triggered, &parts.view, [&parts] {
        if (const auto item = parts.chart.selectedActivity()) parts.view.categoryWanted.send(*item);
    });
    auto* assign = menu.addAction(icon("folder"), qt(parts.localization.text("timeline_assign_project")));
    QObject::connect(assign, &QAction::triggered, &parts.view, [&parts] { parts.chart.selectTimeRangeOfActivity(); });
    menu.addSeparator();
    auto* remove = menu.addAction(icon("trash"), qt(parts.localization.text("delete")));
    QObject::connect(remove, &QAction::triggered, &parts.view, [&parts] {
        if (const auto item = parts.chart.selectedActivity()) parts.chart.deleteActivity(*item);
    });
}

void addBarAction(QMenu& menu, DayChartView::Parts& parts, const DayChartBar& bar) {
    auto* remove = menu.addAction(
        icon("trash"), qt(parts.localization.text("a11y_delete_bar", bar.name.toStdString(),
                                                  clockText(bar.startHour * 1h), clockText(bar.endHour * 1h))));
    QObject::connect(remove, &QAction::triggered, &parts.view,
                     [&parts] { parts.chart.deleteSelectedProjectAnnotation(); });
}

void addGapActions(QMenu& menu, DayChartView::Parts& parts, bool isLeftEmpty) {
    const auto add = [&](const char* name, const std::string& text, auto act) {
        auto* action = menu.addAction(icon(name), qt(text));
        QObject::connect(action, &QAction::triggered, &parts.view, [&parts, act] {
            if (const auto gap = parts.chart.selectedGap()) act(parts.chart, gap->time);
        });
    };
    add("folder", parts.localization.text("timeline_assign_project"),
        [](DayTimelineChart& chart, DateInterval time) { chart.assignGap(time); });
    if (isLeftEmpty) return;
    add("moon", parts.localization.text("gap_leave_empty"),
        [](DayTimelineChart& chart, DateInterval time) { chart.leaveGapEmpty(time); });
}

}  // namespace

void DayChartView::Parts::popUpMenu(const QPoint& globalPoint) {
    present();
    const auto* block = overlay.block ? scene.block(*overlay.block) : nullptr;
    const auto* bar = overlay.bar ? scene.bar(*overlay.bar) : nullptr;
    const auto* gap = overlay.gap ? scene.gap(*overlay.gap) : nullptr;
    if (block == nullptr && bar == nullptr && gap == nullptr) return;
    tooltip->hide();
    auto* menu = new QMenu(&view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (block != nullptr)
        addBlockActions(*menu, *this);
    else if (bar != nullptr)
        addBarAction(*menu, *this, *bar);
    else
        addGapActions(*menu, *this, gap->isLeftEmpty);
    menu->popup(globalPoint);
}

void DayChartView::Parts::popUpMenuAtChosen() {
    const QRectF shown = toViewport(chosenFrame()) & QRectF(view.viewport()->rect());
    popUpMenu(view.viewport()->mapToGlobal(shown.center().toPoint()));
}

}  // namespace quorvane
