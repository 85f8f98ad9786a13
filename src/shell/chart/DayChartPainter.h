#pragma once

#include "shell/chart/DayChartScene.h"

class QPainter;

/// Paints what of the day chart stays the same until data, zoom or theme change. The painter stands at the content's
/// top left corner.
namespace quorvane::DayChartPainter {

/// Grid, blocks and bars between two heights.
void paintStrip(QPainter& painter, const DayChartScene& scene, double top, double bottom);

/// One block with its texts. Without its inner edge it is the chosen one.
void paintBlock(QPainter& painter, const DayChartScene& scene, const DayChartBlock& block, bool hasEdge);

void paintBar(QPainter& painter, const DayChartBar& bar);

/// The nearest whole device pixel.
[[nodiscard]] double snapped(const QPainter& painter, double position);
[[nodiscard]] QRectF snapped(const QPainter& painter, const QRectF& rectangle);

}  // namespace quorvane::DayChartPainter
