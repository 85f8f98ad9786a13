#pragma once

#include "shell/chart/DayChartScene.h"

#include <optional>

class QPainter;

namespace quorvane {

/// What of the day chart is painted live over its tiles.
struct DayChartOverlay {
    struct Now {
        double y = 0;
        QString text;  ///< "16:58"
        friend bool operator==(const Now&, const Now&) = default;
    };

    std::optional<Uuid> block;  ///< chosen
    std::optional<Uuid> bar;    ///< chosen
    std::optional<Uuid> gap;    ///< chosen
    std::optional<QRectF> range;
    std::optional<Now> now;  ///< only while the day is today
    bool showsRing = false;  ///< the focus came by the keyboard
    friend bool operator==(const DayChartOverlay&, const DayChartOverlay&) = default;

    /// The painter stands at the content's top left corner.
    void paint(QPainter& painter, const DayChartScene& scene) const;
};

/// What the chart's state puts over its blocks. `now` is the present moment.
[[nodiscard]] DayChartOverlay dayChartOverlay(const DayTimelineChart& chart, const DayChartScene& scene, Date now,
                                              bool showsRing);

}  // namespace quorvane
