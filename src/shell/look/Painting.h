#pragma once

#include "base/Color.h"
#include "timeline/ProjectTone.h"

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;
class QWidget;

namespace quorvane {

/// Lengths that the screens share, in logical pixels.
namespace Metrics {
inline constexpr int pageMargin = 24;
inline constexpr int timelineMargin = 16;
inline constexpr int cardPadding = 16;
inline constexpr int cardGap = 16;
inline constexpr int blockRadius = 4;
inline constexpr int smallRadius = 7;
inline constexpr int controlRadius = 8;
inline constexpr int cardRadius = 10;
inline constexpr int sheetRadius = 14;
inline constexpr int controlHeight = 32;
inline constexpr int smallHeight = 28;
inline constexpr int largeHeight = 36;
inline constexpr int navigationHeight = 38;
}  // namespace Metrics

/// A rectangle with round corners; the edge of 1 lies inside it and is crisp. An invalid colour is left out.
void paintPanel(QPainter& painter, const QRectF& rectangle, double radius, const QColor& fill, const QColor& edge);

/// The ring around what has the focus: a gap of 2 in `ground`, then 2 of accent. It reaches 4 beyond the rectangle.
void paintFocusRing(QPainter& painter, const QRectF& rectangle, double radius, const QColor& ground);

enum class Elevation { popUp, sheet };
/// The shadow of a floating panel, from a cached nine-patch; it reaches 32 (pop-up) or 66 (sheet) beyond the panel.
void paintShadow(QPainter& painter, const QRectF& panel, double radius, Elevation elevation);

/// A project's square: its tone's `fill` with an edge of 2 in its `accent`.
void paintProjectDot(QPainter& painter, const QRectF& rectangle, const ProjectTone& tone);

/// A tile in the application's colour with the first letter of its name.
void paintAppTile(QPainter& painter, const QRectF& rectangle, const QColor& color, const QString& appName);

/// The nearest position at which a line of one pixel is sharp.
[[nodiscard]] double crisp(double position, double devicePixelRatio);

/// Did the focus come by the keyboard? Rings are shown only then.
[[nodiscard]] bool showsFocusRing(const QWidget& widget);

}  // namespace quorvane
