#include "shell/chart/DayChartParts.h"

#include "shell/look/EmptyState.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QEasingCurve>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr int scrollBarMargin = 2;
constexpr double emptyGap = 24;
constexpr int leastEmptyRoom = 220;  // icon, title and a text of three lines
constexpr double visibleMargin = 8;  // around what was brought into view
constexpr double scrollEdge = 24;    // a drag this near to an edge scrolls
constexpr int dragScrollInterval = 16;
constexpr double fastestDragScroll = 16;
constexpr double tooltipDrop = 20;  // below the top of its block
constexpr double tooltipMargin = 4;

}  // namespace

DayChartView::Parts::Parts(DayChartView& owner, DayTimelineChart& shown, platform::RunLoop& loop,
                           const platform::ApplicationIcons& icons, const Localization& texts)
    : view(owner), chart(shown), runLoop(loop), localization(texts), gestures(shown, scene), keys(shown, loop, scene),
      items(owner), scrollBar(new QScrollBar(Qt::Vertical, &owner)),
      emptyState(new EmptyState("timeline", qt(texts.text("ui_no_records_title")),
                                qt(texts.text("ui_no_records_description")), owner.viewport())),
      tooltip(new DayChartTooltip(icons, owner.viewport())) {
    emptyState->setAttribute(Qt::WA_TransparentForMouseEvents);
    emptyState->hide();
    scrollBar->hide();
    scrollBar->setSingleStep(20);
    auto* inner = view.verticalScrollBar();
    inner->setSingleStep(20);
    QObject::connect(inner, &QScrollBar::valueChanged, scrollBar, [this](int value) { scrollBar->setValue(value); });
    QObject::connect(scrollBar, &QScrollBar::valueChanged, inner, [inner](int value) { inner->setValue(value); });
    QObject::connect(scrollBar, &QScrollBar::sliderPressed, inner, [this] { animation.stop(); });
    animation.setEasingCurve(QEasingCurve::InOutQuad);
    QObject::connect(&animation, &QVariantAnimation::valueChanged, inner,
                     [inner](const QVariant& value) { inner->setValue(value.toInt()); });
    subscribe(chart.changed, view, [this] { refresh(); });
    subscribe(chart.scrollRequested, view, [this](const ScrollTarget& target) { scrollTo(target); });
}

// --- State --------------------------------------------------------------------------------------------------------

void DayChartView::Parts::refresh() {
    isStale = true;
    if (view.isVisible()) present();
}

const DayChartScene& DayChartView::Parts::present() {
    if (!std::exchange(isStale, false)) return scene;
    DayChartScene next = dayChartScene(chart, std::max(view.viewport()->width() - besideChart, 0), localization);
    if (next != scene) {
        scene = std::move(next);
        tiles.clear();
        layOut();
        items.prune();
        tooltip->hide();
        view.viewport()->update();
    }
    auto nextOverlay = dayChartOverlay(chart, scene, runLoop.now(), view.hasFocus() && showsFocusRing(view));
    if (nextOverlay != overlay) {
        const DayChartOverlay before = std::exchange(overlay, std::move(nextOverlay));
        items.announce(before, overlay);
        view.viewport()->update();
    }
    return scene;
}

QRectF DayChartView::Parts::chosenFrame() {
    present();
    const auto* block = overlay.block ? scene.block(*overlay.block) : nullptr;
    const auto* bar = overlay.bar ? scene.bar(*overlay.bar) : nullptr;
    const auto* gap = overlay.gap ? scene.gap(*overlay.gap) : nullptr;
    return block ? block->frame : bar ? bar->frame : gap ? gap->frame : QRectF();
}

/// Once a minute, with the minute, the now line moves.
void DayChartView::Parts::followMinutes() {
    const double second = std::fmod(runLoop.now().time_since_epoch().count(), 60);
    nextMinute = runLoop.after(Seconds(60 - second), [this] {
        refresh();
        followMinutes();
    });
}

// --- Place --------------------------------------------------------------------------------------------------------

int DayChartView::Parts::scroll() const {
    return view.verticalScrollBar()->value();
}

/// Places what stands on the content.
void DayChartView::Parts::layOut() {
    const QSize size = view.viewport()->size();
    double height = scene.height;
    if (scene.isEmpty) {
        const int room = std::max(emptyState->heightForWidth(static_cast<int>(scene.width)), leastEmptyRoom);
        emptyState->setGeometry(0, qRound(height + emptyGap) - scroll(), static_cast<int>(scene.width), room);
        height += emptyGap + room;
    }
    emptyState->setVisible(scene.isEmpty);
    const int most = std::max(0, static_cast<int>(std::ceil(height)) - size.height());
    const QScopedValueRollback placing(isPlacing, true);
    for (QScrollBar* bar : {view.verticalScrollBar(), scrollBar}) {
        bar->setPageStep(size.height());
        bar->setRange(0, most);
    }
    scrollBar->setGeometry(size.width() - besideChart, scrollBarMargin, besideChart,
                           size.height() - 2 * scrollBarMargin);
    scrollBar->setVisible(most > 0);
}

/// Brings the point at `fraction` of the hour's row to the same fraction of the view.
void DayChartView::Parts::scrollTo(const ScrollTarget& target) {
    present();
    const auto hour = static_cast<std::size_t>(std::clamp(target.hour, 0, 23));
    const double row = chart.layout().heights()[hour];
    const QScopedValueRollback placing(isPlacing, true);
    const double top = chart.layout().offsets()[hour] + target.fraction * (row - view.viewport()->height());
    scrollTo(qRound(top), static_cast<int>(target.duration / 1ms));
}

void DayChartView::Parts::scrollTo(int value, int milliseconds) {
    animation.stop();
    const int end = std::clamp(value, 0, view.verticalScrollBar()->maximum());
    if (milliseconds <= 0 || !Motion::isAllowed() || !view.isVisible()) return view.verticalScrollBar()->setValue(end);
    animation.setStartValue(scroll());
    animation.setEndValue(end);
    animation.setDuration(milliseconds);
    animation.start();
}

void DayChartView::Parts::makeVisible(const QRectF& content) {
    if (content.isEmpty()) return;
    const double top = content.top() - visibleMargin;
    const double bottom = content.bottom() + visibleMargin - view.viewport()->height();
    if (scroll() > top)
        scrollTo(static_cast<int>(std::floor(top)), 0);
    else if (scroll() < bottom)
        scrollTo(static_cast<int>(std::ceil(std::min(top, bottom))), 0);
}

// --- Pointer ------------------------------------------------------------------------------------------------------

void DayChartView::Parts::dragTo(QPointF viewportPoint) {
    pointer = viewportPoint;
    gestures.move(toContent(viewportPoint));
    if (!gestures.isDragging()) return;
    const QRectF bounds(view.viewport()->rect());
    const bool isNearEdge = pointer.y() < scrollEdge || pointer.y() > bounds.height() - scrollEdge;
    if (!isNearEdge)
        dragScroll.stop();
    else if (!dragScroll.isActive())
        dragScroll.start(dragScrollInterval, &view);
    const auto range = DayTimelineGeometry::selectedRange(*chart.selection(), chart.layout());
    if (!range) return tooltip->hide();
    const QPointF point = gestures.dragPoint();
    tooltip->showRange(
        DayTimelineGeometry::tooltipLines(*range, {point.x(), point.y()}, chart.hourHeight(), localization),
        point - QPointF(0, scroll()),
        bounds.adjusted(tooltipMargin, tooltipMargin, -besideChart - tooltipMargin, -tooltipMargin));
}

/// The nearer to the edge, the faster.
void DayChartView::Parts::scrollWhileDragging() {
    const double above = scrollEdge - pointer.y();
    const double below = pointer.y() - (view.viewport()->height() - scrollEdge);
    const double speed = std::min(std::max(above, below) / 2, fastestDragScroll);
    if (!gestures.isDragging() || speed <= 0) return dragScroll.stop();
    animation.stop();
    const int before = scroll();
    view.verticalScrollBar()->setValue(before + qRound(above > below ? -speed : speed));
    if (scroll() == before) return dragScroll.stop();
    dragTo(pointer);
}

void DayChartView::Parts::endDrag() {
    dragScroll.stop();
    tooltip->hide();
}

void DayChartView::Parts::hover(QPointF viewportPoint) {
    const QPointF point = toContent(viewportPoint);
    const auto* item = DayTimelineGeometry::hitTest(chart.processedRecords(), {point.x(), point.y()}, scene.width);
    if (item == nullptr || scene.barAt(point) != nullptr) return tooltip->hide();
    const QRectF bounds = view.viewport()->rect();
    // Beside the pointer, so that it never covers what it tells of there.
    double left = viewportPoint.x() + tooltipDrop;
    if (left + DayChartTooltip::cardWidth > bounds.right() - besideChart - tooltipMargin)
        left = viewportPoint.x() - tooltipDrop - DayChartTooltip::cardWidth;
    tooltip->showBlock(*item, localization, {left, item->yTop - scroll() + tooltipDrop},
                       bounds.adjusted(tooltipMargin, tooltipMargin, -besideChart - tooltipMargin, -tooltipMargin));
}

}  // namespace quorvane
