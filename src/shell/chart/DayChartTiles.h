#pragma once

#include "shell/chart/DayChartScene.h"

#include <QPixmap>
#include <QRect>
#include <map>

class QPainter;

namespace quorvane {

/// The unmoving part of the day chart as pixmaps of 512 rows, so that scrolling copies pixels. Those around what is
/// seen are kept, the others dropped.
class DayChartTiles {
public:
    static constexpr int rows = 512;  ///< logical pixels

    /// After a change of data, zoom or theme.
    void clear() { tiles_.clear(); }

    /// Paints what is exposed of a view of `viewHeight` whose top stands `scroll` below the content's.
    void paint(QPainter& painter, const QRect& exposed, int viewHeight, int scroll, const DayChartScene& scene);

private:
    [[nodiscard]] const QPixmap& tile(int index, const DayChartScene& scene);

    std::map<int, QPixmap> tiles_;
    double devicePixelRatio_ = 1;
};

}  // namespace quorvane
