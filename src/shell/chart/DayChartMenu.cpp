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
        menu.addAction(menuIcon("tag"), qt(parts.localization.text("ui_category_and_tags")) + QString::fromUtf8("…"));
    QObject::connect(category, &QAction::triggered, &parts.view, [&parts] {
        if (const auto item = parts.chart.selectedActivity()) parts.view.categoryWanted.send(*item);
    });
    auto* assign = menu.addAction(menuIcon("folder"), qt(parts.localization.text("timeline_assign_project")));
    QObject::connect(assign, &QAction::triggered, &parts.view, [&parts] { parts.chart.selectTimeRangeOfActivity(); });
    menu.addSeparator();
    auto* remove = menu.addAction(menuIcon("trash"), qt(parts.localization.text("delete")));
    QObject::connect(remove, &QAction::triggered, &parts.view, [&parts] {
        if (const auto item = parts.chart.selectedActivity()) parts.chart.deleteActivity(*item);
    });
}

void addBarAction(QMenu& menu, DayChartView::Parts& parts, const DayChartBar& bar) {
    auto* remove = menu.addAction(
        menuIcon("trash"), qt(parts.localization.text("a11y_delete_bar", bar.name.toStdString(),
                                                      clockText(bar.startHour * 1h), clockText(bar.endHour * 1h))));
    QObject::connect(remove, &QAction::triggered, &parts.view,
                     [&parts] { parts.chart.deleteSelectedProjectAnnotation(); });
}

}  // namespace

void DayChartView::Parts::popUpMenu(const QPoint& globalPoint) {
    present();
    const auto* block = overlay.block ? scene.block(*overlay.block) : nullptr;
    const auto* bar = overlay.bar ? scene.bar(*overlay.bar) : nullptr;
    if (block == nullptr && bar == nullptr) return;
    tooltip->hide();
    auto* menu = new QMenu(&view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (block != nullptr)
        addBlockActions(*menu, *this);
    else
        addBarAction(*menu, *this, *bar);
    menu->popup(globalPoint);
}

void DayChartView::Parts::popUpMenuAtChosen() {
    const QRectF shown = toViewport(chosenFrame()) & QRectF(view.viewport()->rect());
    popUpMenu(view.viewport()->mapToGlobal(shown.center().toPoint()));
}

}  // namespace quorvane
