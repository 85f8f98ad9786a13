#include "shell/window/ActivityLayout.h"

#include "timeline/DayTimelineGeometry.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastGap = 4;
constexpr int mostGap = 32;

/// At the top of the side, else right of the column, else a line above it. The project panel has the side for itself.
void placePraise(ActivityLayout& layout, int pageWidth, bool hasProjectPanel) {
    if (layout.side) {
        if (!hasProjectPanel) layout.praise = layout.side;
        return;
    }
    const QRect& chart = layout.chart;
    const int start = chart.x() + chart.width() + ActivityLayout::margin;
    const int beside = pageWidth - ActivityLayout::margin - start;
    if (beside >= ActivityLayout::praiseWidth) {
        layout.praise = QRect(start, chart.y(), std::min(beside, ActivityLayout::mostPraise), chart.height());
        return;
    }
    layout.isPraiseLine = true;
    layout.praise = QRect(chart.x(), chart.y(), chart.width(), ActivityLayout::praiseLine);
    const int taken = ActivityLayout::praiseLine + leastGap;
    layout.chart = {chart.x(), chart.y() + taken, chart.width(), std::max(0, chart.height() - taken)};
}

}  // namespace

ActivityLayout activityLayout(QSize page, TimelineViewMode mode, bool hasProjectPanel) {
    const auto widths = DayTimelineGeometry::widths(page.width(), mode);
    const int top = ActivityLayout::headerHeight;
    const int height = std::max(0, page.height() - top - ActivityLayout::margin);
    ActivityLayout layout{.header = {0, 0, page.width(), top}};
    if (mode != TimelineViewMode::day) {
        layout.chart = {0, top, page.width(), std::max(0, page.height() - top)};
        return layout;
    }
    const int legend = widths.showsLeftList ? static_cast<int>(widths.leftList) : 0;
    const int side =
        !widths.showsSidePanel ? 0 : static_cast<int>(hasProjectPanel ? widths.projectPanel : widths.detailsPanel);
    const int column = std::min(static_cast<int>(widths.hourColumn) + ActivityLayout::scrollBarWidth, page.width());
    const int columns = 1 + (legend > 0 ? 1 : 0) + (side > 0 ? 1 : 0);
    const int left = page.width() - legend - column - side;
    const int gap = std::clamp(left / (columns + 1), leastGap, mostGap);
    // What the gaps don't take goes outside; a column alone stays at the start where a pop-up has room beside it.
    const bool hasRoomBeside = columns == 1 && left >= ActivityLayout::popUpWidth + 2 * ActivityLayout::margin;
    int x = hasRoomBeside ? ActivityLayout::margin : gap + std::max(0, (left - gap * (columns + 1)) / 2);
    if (left < 2 * leastGap) x = 0;
    if (legend > 0) {
        layout.legend = QRect(x, top, legend, height);
        x += legend + gap;
    }
    layout.chart = {x, top, column, height};
    if (side > 0) layout.side = QRect(x + column + gap, top, side, height);
    placePraise(layout, page.width(), hasProjectPanel);
    return layout;
}

QRect popUpBeside(const QRect& block, QSize popUp, const QRect& column, const QRect& page) {
    QRect place(QPoint(column.right() + leastGap, block.top()), popUp);
    if (place.right() > page.right() - leastGap) place.moveRight(page.right() - leastGap);
    if (place.bottom() > page.bottom() - ActivityLayout::margin)
        place.moveBottom(page.bottom() - ActivityLayout::margin);
    if (place.top() < ActivityLayout::headerHeight) place.moveTop(ActivityLayout::headerHeight);
    return place;
}

}  // namespace quorvane
