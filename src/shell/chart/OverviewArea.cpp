#include "shell/chart/OverviewArea.h"

#include "base/LocalTimeZone.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "timeline/TimelineCalendar.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace quorvane {

namespace {

class Blank : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override { QPainter(this).fillRect(event->rect(), theme().canvas); }
};

}  // namespace

OverviewArea::OverviewArea(MyActivityView& activity, TimelineViewMode mode, QWidget* parent)
    : QScrollArea(parent), activity_(activity), mode_(mode), blank_(new Blank(this)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    subscribe(activity.changed, *this, [this] { rebuildSoon(); });
}

bool OverviewArea::isKnown() const {
    return activity_.chart().currentViewMode() == mode_ && activity_.state() == LiveRecords::State::read;
}

void OverviewArea::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    blank_->raise();
    blank_->show();
    rebuildNow();
    awaitMinute();
}

void OverviewArea::hideEvent(QHideEvent* event) {
    QScrollArea::hideEvent(event);
    nextMinute_.reset();
}

void OverviewArea::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) rebuildSoon();  // texts stand elsewhere
}

void OverviewArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    blank_->resize(size());
}

void OverviewArea::rebuildNow() {
    if (!isKnown()) return;
    rebuiltAt_ = activity_.runLoop().now();
    zone_ = localTimeZone();
    rebuild();
    blank_->hide();
}

void OverviewArea::rebuildSoon() {
    if (!isVisible() || std::exchange(isRebuildPosted_, true)) return;
    postFor(*this, activity_.runLoop(), [this] {
        isRebuildPosted_ = false;
        if (isVisible()) rebuildNow();
    });
}

void OverviewArea::awaitMinute() {
    const Seconds left{60 - std::fmod(secondsSince1970(activity_.runLoop().now()), 60)};
    nextMinute_ = activity_.runLoop().after(left, [this] {
        const Date now = activity_.runLoop().now();
        if (timelineCalendar().isSameDay(now, rebuiltAt_) && zone_ == localTimeZone()) {
            minutePassed(now);
        } else {
            rebuildNow();
        }
        awaitMinute();
    });
}

}  // namespace quorvane
