#pragma once

#include "timeline/MonthTimeline.h"

#include <QRectF>
#include <QString>

class QPainter;

namespace quorvane {

/// A cell with what only the screen knows of it.
struct MonthCellPicture {
    const MonthSimpleCell& cell;
    QRectF rectangle;
    QString more;           ///< how many items found no room, "+3"; may be empty
    bool isComing = false;  ///< it has yet to begin
    bool isHovered = false;
};

void paintMonthCell(QPainter& painter, const MonthCellPicture& picture);

/// The line of the cell at this place; -1 for none.
[[nodiscard]] int monthCellLineAt(const QPointF& point, const MonthSimpleCell& cell, const QRectF& rectangle);

inline constexpr double monthCellRadius = 6;

}  // namespace quorvane
