#pragma once

#include "shell/cards/CardScene.h"

namespace quorvane {

/// The program's mark in its own colours.
void paintMark(QPainter& painter, const QRectF& rectangle);

/// The code with the light border that readers need, its lower right corner at `corner`; two pixels a module, upright
/// whatever the painter's transformation is. Returns its rectangle; nothing for an empty code.
QRectF paintCode(const CardScene& scene, const QPointF& corner, Color dark, Color light, double radius = 0);

/// The foot: mark and name at the left end of the line, the code at its right end, both ending at `bottom`.
struct FootLook {
    double left = 62;
    double right = 538;
    double bottom = 850;
    Color ink;
    Color codeDark;
    Color codeLight;
    double codeRadius = 0;
};
void paintFoot(const CardScene& scene, const FootLook& look);

/// The hours and their unit on one baseline between the sides of `room`. The unit may be left out (size 0). Returns
/// where it ends.
double paintHours(const CardScene& scene, const QRectF& room, double baseline, const TextLook& number,
                  const TextLook& unit, const std::optional<QBrush>& brush = std::nullopt);

/// The name of an application at the left, its hours or share at the right, in the middle of the rectangle. The
/// highlighted one is bold and has a seal; the others step back.
void paintNameAndValue(const CardScene& scene, const QRectF& rectangle, const CardContent::Row& row,
                       const TextLook& name, const TextLook& value);

/// The colour of the row's part of a chart.
[[nodiscard]] QColor chartColor(const CardContent::Row& row);
[[nodiscard]] QColor chartColor(const CardContent::Row& row, Color color);

/// A bar with round ends; a part of a track of the whole width.
void paintBar(QPainter& painter, const QRectF& track, double part, const QColor& color, const QColor& trackColor);

/// A ring of the shares, clockwise from the top; what the rows leave is in `rest`.
void paintRing(const CardScene& scene, const QRectF& rectangle, double thickness, Color rest);

/// The rows in two columns with squares or dots in their colours. Returns where they end.
double paintLegend(const CardScene& scene, const QRectF& room, double pitch, const TextLook& name,
                   const TextLook& value, double dotRadius, const std::vector<QColor>& colors);

/// The title of the rows, or the note that stands for them. Returns where it ends.
double paintTitle(const CardScene& scene, const QRectF& room, const TextLook& look);

}  // namespace quorvane
