#pragma once

#include "shell/chart/DayCells.h"
#include "timeline/MonthTimeline.h"

#include <vector>

namespace quorvane {

/// What the canvas of a month shows.
struct MonthPicture {
    MonthGrid grid;
    std::vector<QString> weekdays;  ///< from the user's first
    std::vector<QString> names;     ///< the days' for assistive technology
    std::vector<QString> more;      ///< for each day how many items found no room, "+3"; may be empty
    Date now;
};

/// The calendar of a month on a card. It is as high as its weeks.
class MonthCanvas : public DayCells {
public:
    explicit MonthCanvas(QWidget* parent = nullptr);

    void setMonth(MonthPicture month);
    [[nodiscard]] int heightNeeded() const;
    /// The width below which the cells would be too narrow to be read.
    [[nodiscard]] static int leastWidth();

protected:
    [[nodiscard]] QString tipAt(const QPointF& point) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
    [[nodiscard]] int rows() const;
    [[nodiscard]] double cellWidth() const;
    [[nodiscard]] QRectF cellRectangle(int position) const;
    void paintWeekdays(QPainter& painter) const;

    MonthPicture month_;
};

}  // namespace quorvane
