#pragma once

#include "shell/chart/DayChartAccessibility.h"
#include "shell/chart/DayChartGestures.h"
#include "shell/chart/DayChartKeys.h"
#include "shell/chart/DayChartOverlay.h"
#include "shell/chart/DayChartScene.h"
#include "shell/chart/DayChartTiles.h"
#include "shell/chart/DayChartTooltip.h"
#include "shell/chart/DayChartView.h"

#include <QBasicTimer>
#include <QPointer>
#include <QVariantAnimation>
#include <memory>

class QScrollBar;

namespace quorvane {

class EmptyState;

/// What a `DayChartView` is made of, for the files that carry it out.
struct DayChartView::Parts {
    Parts(DayChartView& owner, DayTimelineChart& shown, platform::RunLoop& loop,
          const platform::ApplicationIcons& icons, const Localization& texts);

    /// Takes over what the chart holds now, and repaints if anything has changed.
    void refresh();
    /// The scene as it is now, also while the view is hidden.
    const DayChartScene& present();

    [[nodiscard]] int scroll() const;
    [[nodiscard]] QPointF toContent(QPointF viewportPoint) const { return viewportPoint + QPointF(0, scroll()); }
    [[nodiscard]] QRectF toViewport(const QRectF& content) const { return content.translated(0, -scroll()); }
    /// The frame of the chosen block, bar or gap; null if there is none.
    [[nodiscard]] QRectF chosenFrame();

    void layOut();
    void scrollTo(const ScrollTarget& target);
    void scrollTo(int value, int milliseconds);
    void makeVisible(const QRectF& content);
    void followMinutes();

    void dragTo(QPointF viewportPoint);
    void scrollWhileDragging();
    void endDrag();
    void hover(QPointF viewportPoint);
    /// Of the chosen block, bar or gap; nothing without one.
    void popUpMenu(const QPoint& globalPoint);
    void popUpMenuAtChosen();

    DayChartView& view;
    DayTimelineChart& chart;
    platform::RunLoop& runLoop;
    const Localization& localization;

    DayChartScene scene;
    bool isStale = true;
    DayChartOverlay overlay;
    DayChartTiles tiles;
    DayChartGestures gestures;
    DayChartKeys keys;
    DayChartItems items;

    QScrollBar* scrollBar;  ///< over the viewport, so that the ring of a chosen block has room beside it
    EmptyState* emptyState;
    DayChartTooltip* tooltip;
    QVariantAnimation animation;
    QBasicTimer dragScroll;
    QPointF pointer;  ///< of the drag under way
    int wheelRest = 0;
    bool isPlacing = false;                          ///< what scrolls now isn't the user
    std::unique_ptr<platform::WorkItem> nextMinute;  ///< only while visible
};

}  // namespace quorvane
