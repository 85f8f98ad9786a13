#pragma once

#include "shell/chart/DayCells.h"
#include "shell/chart/WeekPainter.h"

#include <vector>

namespace quorvane {

/// Seven days beside each other. It is as high as its days; where they don't fit its width, it wants to be wider.
class WeekCanvas : public DayCells {
public:
    using DayCells::DayCells;

    /// How wide a column is where the view is so wide.
    [[nodiscard]] static double columnWidth(int viewWidth);
    /// The narrowest canvas for columns of this width.
    [[nodiscard]] static int widthOf(double columnWidth);

    /// The bars were made for this column width; `names` are the days' for assistive technology.
    void setWeek(std::vector<WeekDay> days, const std::vector<QString>& names, double columnWidth);
    /// Moves the line of the present moment, and paints nothing else.
    void setNow(Date now);

protected:
    [[nodiscard]] QString tipAt(const QPointF& point) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();

    WeekPicture week_;
    std::vector<QString> names_;
};

}  // namespace quorvane
