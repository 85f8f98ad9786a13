#include "shell/chart/DayChartOverlay.h"

#include "base/Calendar.h"
#include "base/TimeText.h"
#include "shell/chart/DayChartPainter.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double labelEnd = 42;
constexpr double labelHeight = 14;
constexpr double nearNow = 14;  // hour labels closer to the pill's centre are left out
constexpr QSizeF pill{42, 16};
constexpr double pillLeft = 4;
constexpr double nowThickness = 1.5;
constexpr double ringReach = 4;
constexpr int closeCircle = 20;
constexpr double rangeRadius = 6;
constexpr double rangeOpacity = 0.1;

void paintLabels(QPainter& painter, const DayChartScene& scene, const std::optional<DayChartOverlay::Now>& now) {
    painter.setFont(font(TypeRole::caption));
    const QRectF clip = painter.clipBoundingRect();
    for (std::size_t hour = 0; hour < scene.hours.size(); ++hour) {
        const DayChartHour& label = scene.hours[hour];
        if (now && std::abs(label.centre - now->y) < nearNow) continue;
        const QRectF place(0, label.centre - labelHeight / 2, labelEnd, labelHeight);
        if (!clip.isEmpty() && !clip.intersects(place)) continue;
        painter.setPen(label.isActive ? theme().text2 : theme().text3);
        painter.drawText(place, Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextDontClip,
                         qt(clockText(static_cast<double>(hour) * 1h)));
    }
}

/// Over its neighbours and under the bars, which are painted again where it hid them.
void paintChosenBlock(QPainter& painter, const DayChartScene& scene, const DayChartBlock& block) {
    const QRectF frame = DayChartPainter::snapped(painter, block.frame);
    paintFocusRing(painter, frame, Metrics::blockRadius, theme().surface);
    DayChartPainter::paintBlock(painter, scene, block, false);
    const QRectF ring = frame.adjusted(-ringReach, -ringReach, ringReach, ringReach);
    painter.save();
    painter.setClipRect(ring, Qt::IntersectClip);
    for (const DayChartBar& bar : scene.bars)
        if (bar.frame.intersects(ring)) DayChartPainter::paintBar(painter, bar);
    painter.restore();
}

void paintChosenGap(QPainter& painter, const DayChartGap& gap) {
    const QRectF frame = DayChartPainter::snapped(painter, gap.frame);
    painter.setPen(QPen(theme().accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(frame.adjusted(1, 1, -1, -1), Metrics::blockRadius, Metrics::blockRadius);
}

void paintChosenBar(QPainter& painter, const DayChartBar& bar, bool showsRing) {
    const QRectF frame = DayChartPainter::snapped(painter, bar.frame);
    painter.setPen(QPen(theme().blue, 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(frame.adjusted(1.5, 1.5, -1.5, -1.5), Metrics::blockRadius - 1.5,
                            Metrics::blockRadius - 1.5);
    if (showsRing) paintFocusRing(painter, frame, Metrics::blockRadius, theme().surface);
    QRectF circle(0, 0, closeCircle, closeCircle);
    circle.moveCenter(closeCircleTarget(frame).center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(circle);
    drawIcon(painter, circle, "close-circle", theme().badFill, closeCircle, Qt::LeftToRight, Qt::white);
}

void paintNow(QPainter& painter, const DayChartScene& scene, const DayChartOverlay::Now& now) {
    const double top = DayChartPainter::snapped(painter, now.y - nowThickness / 2);
    painter.fillRect(
        QRectF(DayTimelineGeometry::gutterWidth, top, scene.width - DayTimelineGeometry::gutterWidth, nowThickness),
        theme().accent);
    QRectF place(QPointF(pillLeft, 0), pill);
    place.moveTop(DayChartPainter::snapped(painter, now.y - pill.height() / 2));
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme().accFill);
    painter.drawRoundedRect(place, pill.height() / 2, pill.height() / 2);
    painter.setFont(font(TypeRole::bar));
    painter.setPen(theme().onFill);
    painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, now.text);
}

/// A white line under the dashes, so that they read on any block.
void paintRange(QPainter& painter, const QRectF& range) {
    painter.setPen(QPen(Qt::white, 4));
    painter.setBrush(withOpacity(theme().blue, rangeOpacity));
    painter.drawRoundedRect(range, rangeRadius, rangeRadius);
    QPen dashes(theme().blue, 2);
    dashes.setCapStyle(Qt::FlatCap);
    dashes.setDashPattern({5, 5});
    painter.setPen(dashes);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(range, rangeRadius, rangeRadius);
}

/// The drag's rectangle; after it the column at the range's final times.
std::optional<QRectF> rangeOf(const DayTimelineChart& chart, const DayChartScene& scene) {
    if (const auto& drag = chart.selection())
        return QRectF(QPointF(drag->start.x, drag->start.y), QPointF(drag->end.x, drag->end.y)).normalized();
    const auto range = chart.selectedTimeRange();
    if (!range) return std::nullopt;
    const double top = chart.layout().yPosition(range->startHour);
    const double bottom = chart.layout().yPosition(range->endHour);
    return QRectF(DayTimelineGeometry::gutterWidth + 2, top + 2, scene.width - DayTimelineGeometry::gutterWidth - 4,
                  std::max(bottom - top - 4, 4.0));
}

}  // namespace

void DayChartOverlay::paint(QPainter& painter, const DayChartScene& scene) const {
    painter.setRenderHint(QPainter::Antialiasing);
    paintLabels(painter, scene, now);
    if (const auto* chosen = gap ? scene.gap(*gap) : nullptr) paintChosenGap(painter, *chosen);
    if (const auto* chosen = block ? scene.block(*block) : nullptr) paintChosenBlock(painter, scene, *chosen);
    if (const auto* chosen = bar ? scene.bar(*bar) : nullptr) paintChosenBar(painter, *chosen, showsRing);
    if (now) paintNow(painter, scene, *now);
    if (range) paintRange(painter, *range);
}

DayChartOverlay dayChartOverlay(const DayTimelineChart& chart, const DayChartScene& scene, Date now, bool showsRing) {
    DayChartOverlay overlay{.block = std::nullopt,
                            .bar = std::nullopt,
                            .gap = std::nullopt,
                            .range = rangeOf(chart, scene),
                            .now = std::nullopt,
                            .showsRing = showsRing};
    if (chart.selectedActivity()) overlay.block = chart.selectedActivity()->id;
    if (chart.selectedGap()) overlay.gap = chart.selectedGap()->id;
    if (chart.selectedProjectAnnotation()) overlay.bar = chart.selectedProjectAnnotation()->id();
    const auto calendar = Calendar::current();
    if (!calendar.isSameDay(chart.selectedDate(), now)) return overlay;
    const auto time = calendar.components(now);
    const Seconds sinceMidnight = time.hour * 1h + time.minute * 1min;
    overlay.now = {chart.layout().yPosition(sinceMidnight / 1h), qt(clockText(sinceMidnight))};
    return overlay;
}

}  // namespace quorvane
