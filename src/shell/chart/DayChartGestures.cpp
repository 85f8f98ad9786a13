#include "shell/chart/DayChartGestures.h"

#include <QLineF>
#include <algorithm>

namespace quorvane {
namespace {

ChartPoint chartPoint(QPointF point) {
    return {point.x(), point.y()};
}

}  // namespace

bool DayChartGestures::isOnCloseCircle(QPointF point) const {
    const auto& chosen = chart_.selectedProjectAnnotation();
    const auto* bar = chosen ? scene_.bar(chosen->id()) : nullptr;
    return bar != nullptr && closeCircleTarget(bar->frame).contains(point);
}

void DayChartGestures::press(QPointF point) {
    Kind kind = Kind::free;
    if (isOnCloseCircle(point)) {
        kind = Kind::close;
    } else if (scene_.barAt(point) != nullptr) {
        kind = Kind::bar;
    } else if (point.x() < DayTimelineGeometry::gutterWidth || point.x() > scene_.width) {
        kind = Kind::beside;
    }
    press_ = Press{point, kind, chart_.selectedDate()};
}

void DayChartGestures::forgetOfAnotherDate() {
    if (press_ && press_->date != chart_.selectedDate()) press_.reset();
}

void DayChartGestures::move(QPointF point) {
    forgetOfAnotherDate();
    if (!press_ || press_->kind != Kind::free) return;
    dragPoint_ = {std::clamp(point.x(), DayTimelineGeometry::gutterWidth, scene_.width),
                  std::clamp(point.y(), 0.0, scene_.rowsHeight)};
    chart_.drag(chartPoint(press_->point), chartPoint(dragPoint_));
}

void DayChartGestures::release(QPointF point) {
    forgetOfAnotherDate();
    if (!press_) return;
    const Press press = *press_;
    press_.reset();
    if (isDragging()) return chart_.endDrag();
    // A longer way that began on a bar was no click.
    if (QLineF(press.point, point).length() >= DayTimelineGeometry::leastDrag) return;
    if (press.kind == Kind::close) {
        if (isOnCloseCircle(point)) chart_.deleteSelectedProjectAnnotation();
    } else {
        choose(press.point);
    }
}

void DayChartGestures::choose(QPointF point) {
    if (const auto* bar = scene_.barAt(point)) return chart_.select(bar->annotation);
    chart_.click(chartPoint(point), scene_.width);
}

void DayChartGestures::cancel() {
    if (isDragging()) {
        const ChartPoint start = chart_.selection()->start;
        chart_.drag(start, start);  // back at its start it selects nothing
        chart_.endDrag();
    }
    press_.reset();
}

}  // namespace quorvane
