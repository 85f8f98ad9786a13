#include "shell/chart/WeekPainter.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double panelRadius = 8;
constexpr double barRadius = 3;
constexpr double gutterTextEnd = 42;
constexpr double labelAtTopFrom = 18;  ///< lower bars have their label in the middle

QColor weekGround() {
    return onGround(theme().grey, 0.05, theme().canvas);
}

void paintGutter(QPainter& painter, const WeekPicture& week) {
    painter.setFont(font(TypeRole::caption));
    painter.setPen(theme().text2);
    for (int hour = 1; hour < 24; ++hour) {
        const double y = WeekPicture::columnTop + hour * WeekTimeline::hourHeight;
        drawFigures(painter, {week.left, y - WeekTimeline::hourHeight / 2, gutterTextEnd, WeekTimeline::hourHeight},
                    Qt::AlignRight | Qt::AlignVCenter, qt(WeekTimeline::hourLabel(hour)));
    }
}

void paintHeader(QPainter& painter, const WeekPicture& week, int index) {
    const WeekDay& day = week.days[static_cast<std::size_t>(index)];
    const QRectF title(week.columnLeft(index), WeekPicture::headerTop + 2, week.columnWidth,
                       lineHeight(TypeRole::head));
    QFont titleFont = font(TypeRole::head);
    if (day.isComing) titleFont.setWeight(QFont::Medium);
    painter.setFont(titleFont);
    painter.setPen(day.isToday ? theme().accent : day.isComing ? theme().text3 : theme().text);
    painter.drawText(title, Qt::AlignCenter, day.title);
    painter.setFont(font(TypeRole::caption));
    painter.setPen(theme().text3);
    painter.drawText(QRectF(title.left(), title.bottom(), title.width(), lineHeight(TypeRole::caption)),
                     Qt::AlignCenter, day.hours);
}

void paintPanelOfDay(QPainter& painter, const WeekPicture& week, int index) {
    const QRectF panel = week.panel(index);
    const QColor grey = theme().grey;
    const bool isHovered = index == week.hovered;
    const bool isComing = week.days[static_cast<std::size_t>(index)].isComing;
    const QColor fill = onGround(grey, isHovered ? 0.1 : 0.05, isComing ? weekGround() : theme().surface);
    paintPanel(painter, panel, panelRadius, fill, onGround(grey, isHovered ? 0.45 : 0.2, fill));
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int hour = 1; hour < 24; ++hour)
        painter.fillRect(QRectF(panel.left() + 1, panel.top() + hour * WeekTimeline::hourHeight, panel.width() - 2, 1),
                         withOpacity(grey, 0.1));
    painter.setRenderHint(QPainter::Antialiasing);
}

void paintLabel(QPainter& painter, const QRectF& bar, const WeekTimelineLabel& label) {
    const bool isDark = theme().isDark;
    constexpr double padding = WeekTimelineLabel::padding;
    painter.setFont(font(label.fontSize() < 9 ? TypeRole::weekSmall : TypeRole::week));
    const QFontMetricsF metrics(painter.font());
    // A long text may use up the padding at its end.
    const double widest = bar.width() - 2;
    const QString text = metrics.elidedText(qt(label.text), Qt::ElideRight, widest - padding);
    if (text.isEmpty()) return;
    const double height = label.capsuleHeight();
    const double top = bar.height() >= labelAtTopFrom ? bar.top() + 1 : bar.center().y() - height / 2;
    const QRectF capsule(bar.left() + 1, top, std::min(metrics.horizontalAdvance(text) + 2 * padding, widest), height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(isDark ? Qt::black : Qt::white, WeekTimelineLabel::backgroundOpacity(isDark)));
    painter.drawRoundedRect(capsule, barRadius, barRadius);
    painter.setPen(withOpacity(isDark ? Qt::white : Qt::black, WeekTimelineLabel::textOpacity(isDark)));
    painter.drawText(capsule.adjusted(padding, 0, padding, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
}

void paintBar(QPainter& painter, const QRectF& bar, const QColor& fill, const QColor& edge,
              const std::optional<WeekTimelineLabel>& label) {
    paintPanel(painter, bar, std::min(barRadius, bar.height() / 2), fill, edge);
    if (label) paintLabel(painter, bar, *label);
}

void paintBars(QPainter& painter, const WeekPicture& week, int index, const QRectF& exposed) {
    // A label may stand out of its bar.
    const QRectF wanted = exposed.adjusted(-8, -8, 8, 8);
    const WeekTimelineColumn& column = week.days[static_cast<std::size_t>(index)].column;
    for (const WeekActivityTimelineBar& bar : column.activities) {
        const QRectF rectangle = week.barRectangle(index, bar.geometry);
        if (!rectangle.intersects(wanted)) continue;
        const QColor color = toQColor(bar.color);
        paintBar(painter, rectangle, withOpacity(color, WeekActivityTimelineBar::fillOpacity), withOpacity(color, 0.9),
                 bar.label);
    }
    for (const WeekProjectTimelineBar& bar : column.projects) {
        const QRectF rectangle = week.barRectangle(index, bar.geometry);
        if (!rectangle.intersects(wanted)) continue;
        paintBar(painter, rectangle, withOpacity(toQColor(bar.tone.fill), WeekProjectTimelineBar::fillOpacity),
                 toQColor(bar.tone.accent), bar.label);
    }
}

}  // namespace

double WeekPicture::columnLeft(int day) const {
    return left + WeekTimeline::gutterWidth + day * columnWidth;
}

QRectF WeekPicture::dayRectangle(int day) const {
    return {columnLeft(day), headerTop, columnWidth, columnTop - headerTop + WeekTimeline::columnHeight};
}

QRectF WeekPicture::panel(int day) const {
    return {columnLeft(day) + 1, columnTop, columnWidth - 2, WeekTimeline::columnHeight};
}

QRectF WeekPicture::barRectangle(int day, const WeekBarGeometry& geometry) const {
    const BarFrame& frame = geometry.frame;
    return {columnLeft(day) + frame.x - frame.width / 2, columnTop + frame.y - frame.height / 2, frame.width,
            frame.height};
}

QRectF WeekPicture::nowLine() const {
    if (!nowHour) return {};
    // Its upper edge lies between two pixels, so that it is sharp.
    const double top = std::floor(columnTop + *nowHour * WeekTimeline::hourHeight - 0.5);
    for (int i = 0; i < static_cast<int>(days.size()); ++i)
        if (days[static_cast<std::size_t>(i)].isToday) return {columnLeft(i), top, columnWidth, 1.5};
    return {};
}

void paintWeek(QPainter& painter, const WeekPicture& week, const QRectF& exposed) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(exposed, weekGround());
    paintGutter(painter, week);
    for (int i = 0; i < static_cast<int>(week.days.size()); ++i) {
        if (!week.dayRectangle(i).adjusted(-8, 0, 8, 8).intersects(exposed)) continue;
        paintHeader(painter, week, i);
        paintPanelOfDay(painter, week, i);
        paintBars(painter, week, i, exposed);
    }
    if (const QRectF line = week.nowLine(); !line.isNull()) painter.fillRect(line, theme().accent);
    if (week.ringed >= 0) paintFocusRing(painter, week.panel(week.ringed), panelRadius, theme().canvas);
}

}  // namespace quorvane
