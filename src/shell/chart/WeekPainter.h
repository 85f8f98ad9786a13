#pragma once

#include "timeline/WeekTimeline.h"

#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

class QPainter;

namespace quorvane {

/// A day of the week with what its header says.
struct WeekDay {
    WeekTimelineColumn column;
    QString title;  ///< "Mon 9"
    QString hours;  ///< "8.3 h"
    bool isToday = false;
    bool isComing = false;  ///< it has yet to begin
};

/// What the canvas of a week shows. Lengths are logical pixels from its top left corner.
struct WeekPicture {
    static constexpr double margin = 16;     ///< left and right
    static constexpr double headerTop = 4;   ///< the same is free at the bottom
    static constexpr double columnTop = 52;  ///< below the header
    static constexpr double height = columnTop + WeekTimeline::columnHeight + headerTop;

    std::vector<WeekDay> days;
    double left = margin;  ///< of the gutter
    double columnWidth = 100;
    std::optional<double> nowHour;  ///< on the day that is today
    int hovered = -1;               ///< the day under the pointer
    int ringed = -1;                ///< the day with the focus

    [[nodiscard]] double columnLeft(int day) const;
    /// A day with its header: what can be tapped.
    [[nodiscard]] QRectF dayRectangle(int day) const;
    /// The panel of 24 hours.
    [[nodiscard]] QRectF panel(int day) const;
    /// Of a bar that stands in the column.
    [[nodiscard]] QRectF barRectangle(int day, const WeekBarGeometry& geometry) const;
    /// The line of the present moment with its surroundings; null if today is not among the days.
    [[nodiscard]] QRectF nowLine() const;
};

/// Paints what lies in `exposed`.
void paintWeek(QPainter& painter, const WeekPicture& week, const QRectF& exposed);

}  // namespace quorvane
