#include "shell/chart/DayChartView.h"

#include "shell/chart/DayChartParts.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr int wheelStep = 120;  // eighths of a degree, as Qt counts a notch
constexpr double pageShare = 0.9;

}  // namespace

DayChartView::DayChartView(DayTimelineChart& chart, platform::RunLoop& runLoop, const platform::ApplicationIcons& icons,
                           const Localization& localization, QWidget* parent)
    : QAbstractScrollArea(parent) {
    installDayChartAccessibility();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setLayoutDirection(Qt::LeftToRight);  // time runs one way
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);  // the card below shows its round corners
    viewport()->setMouseTracking(true);
    parts_ = std::make_unique<Parts>(*this, chart, runLoop, icons, localization);
}

DayChartView::~DayChartView() = default;

QRect DayChartView::selectedBlock() const {
    const auto& chosen = parts_->chart.selectedActivity();
    const auto* block = chosen ? parts_->present().block(chosen->id) : nullptr;
    if (block == nullptr) return {};
    const QRect shown = parts_->toViewport(block->frame).toAlignedRect() & viewport()->rect();
    return shown.isEmpty() ? QRect() : shown.translated(viewport()->pos());
}

void DayChartView::setEmptyTexts(const QString& title, const QString& text) {
    parts_->emptyState->setTexts(title, text);
    if (parts_->emptyState->isVisible()) parts_->layOut();
}

// --- Painting -----------------------------------------------------------------------------------------------------

void DayChartView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    parts_->tiles.paint(painter, event->rect(), viewport()->height(), parts_->scroll(), parts_->scene);
    painter.save();
    painter.translate(0, -parts_->scroll());
    parts_->overlay.paint(painter, parts_->scene);
    painter.restore();
    const DayChartOverlay& overlay = parts_->overlay;
    if (!overlay.showsRing || overlay.block || overlay.bar || overlay.gap) return;
    painter.setRenderHint(QPainter::Antialiasing);
    paintFocusRing(painter, QRectF(viewport()->rect()).adjusted(4, 4, -4, -4), Metrics::cardRadius - 4,
                   theme().surface);
}

void DayChartView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    const bool looksOther = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange ||
                            event->type() == QEvent::FontChange;
    if (!looksOther || !parts_) return;
    parts_->tiles.clear();
    viewport()->update();
}

// --- Place --------------------------------------------------------------------------------------------------------

void DayChartView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    parts_->chart.setScrollViewHeight(viewport()->height());
    parts_->isStale = true;
    parts_->refresh();
    parts_->layOut();
}

void DayChartView::scrollContentsBy(int, int) {
    const bool isByUser = !parts_->isPlacing && parts_->animation.state() != QAbstractAnimation::Running;
    parts_->chart.noteScroll(parts_->scroll(), isByUser);
    parts_->layOut();
    if (!parts_->gestures.isDragging()) parts_->tooltip->hide();
    viewport()->update();
}

bool DayChartView::event(QEvent* event) {
    if (!parts_) return QAbstractScrollArea::event(event);
    switch (event->type()) {
    case QEvent::Show:
        parts_->isStale = true;
        parts_->refresh();
        parts_->chart.comeBack();
        parts_->followMinutes();
        break;
    case QEvent::Hide:
        parts_->nextMinute.reset();
        parts_->endDrag();
        parts_->gestures.cancel();
        parts_->tooltip->hide();
        break;
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        const bool isDone = QAbstractScrollArea::event(event);
        parts_->refresh();
        return isDone;
    }
    case QEvent::Timer:
        if (static_cast<QTimerEvent*>(event)->timerId() != parts_->dragScroll.timerId()) break;
        parts_->scrollWhileDragging();
        return true;
    default: break;
    }
    return QAbstractScrollArea::event(event);
}

bool DayChartView::viewportEvent(QEvent* event) {
    if (parts_ && event->type() == QEvent::Leave && !parts_->gestures.isDragging()) parts_->tooltip->hide();
    return QAbstractScrollArea::viewportEvent(event);
}

// --- Pointer ------------------------------------------------------------------------------------------------------

void DayChartView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
    parts_->tooltip->hide();
    parts_->gestures.press(parts_->toContent(event->position()));
}

void DayChartView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        parts_->dragTo(event->position());
    else
        parts_->hover(event->position());
}

void DayChartView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mouseReleaseEvent(event);
    parts_->endDrag();
    parts_->gestures.release(parts_->toContent(event->position()));
}

void DayChartView::wheelEvent(QWheelEvent* event) {
    parts_->animation.stop();
    if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
    event->accept();
    parts_->wheelRest += event->angleDelta().y();
    for (; parts_->wheelRest >= wheelStep; parts_->wheelRest -= wheelStep)
        parts_->chart.zoomIn();
    for (; parts_->wheelRest <= -wheelStep; parts_->wheelRest += wheelStep)
        parts_->chart.zoomOut();
}

void DayChartView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Mouse) return parts_->popUpMenuAtChosen();
    const QPointF point = parts_->toContent(viewport()->mapFromGlobal(QPointF(event->globalPos())));
    parts_->endDrag();
    parts_->gestures.cancel();
    parts_->gestures.choose(point);
    parts_->popUpMenu(event->globalPos());
}

// --- Keys ---------------------------------------------------------------------------------------------------------

void DayChartView::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int page = static_cast<int>(viewport()->height() * pageShare);
    // Qt makes a context menu event of the menu key, and none of this one.
    if (modifiers == Qt::ShiftModifier && event->key() == Qt::Key_F10) return parts_->popUpMenuAtChosen();
    if (modifiers != Qt::NoModifier) return event->ignore();
    if (event->key() == Qt::Key_PageUp) return parts_->scrollTo(parts_->scroll() - page, 0);
    if (event->key() == Qt::Key_PageDown) return parts_->scrollTo(parts_->scroll() + page, 0);
    if (event->key() == Qt::Key_Escape && parts_->gestures.isDragging()) {
        parts_->endDrag();
        return parts_->gestures.cancel();
    }
    if (!parts_->keys.press(event->key())) return event->ignore();
    if (parts_->chart.selectedTimeRange() && parts_->overlay.range)
        parts_->makeVisible(*parts_->overlay.range);
    else
        parts_->makeVisible(parts_->chosenFrame());
}

}  // namespace quorvane
