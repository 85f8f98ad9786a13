#include "shell/chart/DayChartTiles.h"

#include "shell/chart/DayChartPainter.h"

#include <QPaintDevice>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quorvane {

void DayChartTiles::paint(QPainter& painter, const QRect& exposed, int viewHeight, int scroll,
                          const DayChartScene& scene) {
    if (const double ratio = painter.device()->devicePixelRatioF(); ratio != devicePixelRatio_) {
        clear();
        devicePixelRatio_ = ratio;
    }
    const int last = std::min(exposed.bottom() + scroll, static_cast<int>(std::ceil(scene.height)) - 1) / rows;
    const int first = std::max(exposed.top() + scroll, 0) / rows;
    // In device pixels, so that each pixel of a tile meets one of the screen at any scale.
    painter.save();
    painter.scale(1 / devicePixelRatio_, 1 / devicePixelRatio_);
    for (int index = first; index <= last; ++index)
        painter.drawPixmap(QPointF(0, std::round((index * rows - scroll) * devicePixelRatio_)), tile(index, scene));
    painter.restore();
    std::erase_if(tiles_, [from = scroll / rows, to = (scroll + viewHeight) / rows](const auto& kept) {
        return kept.first < from - 1 || kept.first > to + 1;
    });
}

const QPixmap& DayChartTiles::tile(int index, const DayChartScene& scene) {
    const auto [place, isNew] = tiles_.try_emplace(index);
    if (!isNew) return place->second;
    const double top = index * rows;
    const double height = std::min<double>(rows, scene.height - top);
    QPixmap pixmap(QSize(static_cast<int>(std::ceil(scene.width * devicePixelRatio_)),
                         static_cast<int>(std::ceil(height * devicePixelRatio_))));
    pixmap.setDevicePixelRatio(devicePixelRatio_);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.translate(0, -top);
    DayChartPainter::paintStrip(painter, scene, top, top + height);
    painter.end();
    pixmap.setDevicePixelRatio(1);
    place->second = std::move(pixmap);
    return place->second;
}

}  // namespace quorvane
