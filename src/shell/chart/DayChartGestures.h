#pragma once

#include "shell/chart/DayChartScene.h"

#include <optional>

namespace quorvane {

/// What the left button does on the day chart: a click chooses, a drag on the free area draws a range, a press on the
/// close-circle of the chosen bar deletes it. Points are the content's.
class DayChartGestures {
public:
    DayChartGestures(DayTimelineChart& chart, const DayChartScene& scene) : chart_(chart), scene_(scene) {}

    void press(QPointF point);
    void move(QPointF point);
    void release(QPointF point);

    /// What a click does: the bar or else the block there, or neither.
    void choose(QPointF point);

    /// Ends the gesture without effect.
    void cancel();

    [[nodiscard]] bool isDragging() const { return chart_.selection().has_value(); }
    /// Where the drag under way has come to; within the hours of the column.
    [[nodiscard]] QPointF dragPoint() const { return dragPoint_; }

private:
    [[nodiscard]] bool isOnCloseCircle(QPointF point) const;
    void forgetOfAnotherDate();

    enum class Kind { free, bar, close, beside };
    struct Press {
        QPointF point;
        Kind kind = Kind::free;
        Date date;  ///< that was shown: a gesture ends with it
    };

    DayTimelineChart& chart_;
    const DayChartScene& scene_;
    std::optional<Press> press_;
    QPointF dragPoint_;
};

}  // namespace quorvane
