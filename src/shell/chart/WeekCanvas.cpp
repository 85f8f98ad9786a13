#include "shell/chart/WeekCanvas.h"

#include "base/TimeText.h"
#include "shell/look/Typography.h"
#include "timeline/TimelineCalendar.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

std::string clockTime(Date dayStart, double hours) {
    const auto time = timelineCalendar().components(dayStart + hours * 1h);
    return clockText(time.hour * 1h + time.minute * 1min);
}

QString tipOf(const std::string& name, Date dayStart, const WeekBarGeometry& bar) {
    return qt(fmt::format("{}\n{} – {}\n{}", name, clockTime(dayStart, bar.startHour), clockTime(dayStart, bar.endHour),
                          lengthText((bar.endHour - bar.startHour) * 1h)));
}

/// What is painted last lies on top.
template <class Bars>
const typename Bars::value_type* topmostAt(const QPointF& point, const Bars& bars, const WeekPicture& week, int day) {
    const auto found = std::find_if(bars.rbegin(), bars.rend(), [&](const auto& bar) {
        return week.barRectangle(day, bar.geometry).contains(point);
    });
    return found == bars.rend() ? nullptr : &*found;
}

}  // namespace

double WeekCanvas::columnWidth(int viewWidth) {
    return WeekTimeline::columnWidth(viewWidth - 2 * WeekPicture::margin);
}

int WeekCanvas::widthOf(double columnWidth) {
    return static_cast<int>(std::ceil(2 * WeekPicture::margin + WeekTimeline::gutterWidth + 7 * columnWidth - 1e-6));
}

void WeekCanvas::setWeek(std::vector<WeekDay> days, const std::vector<QString>& names, double columnWidth) {
    week_.days = std::move(days);
    week_.columnWidth = columnWidth;
    names_ = names;
    place();
}

void WeekCanvas::setNow(Date now) {
    const QRectF before = week_.nowLine();
    week_.nowHour.reset();
    for (const WeekDay& day : week_.days)
        if (day.isToday) week_.nowHour = (now - day.column.date) / 1h;
    for (const QRectF& line : {before, week_.nowLine()})
        if (!line.isNull()) update(line.toAlignedRect().adjusted(0, -1, 0, 1));
}

void WeekCanvas::resizeEvent(QResizeEvent* event) {
    DayCells::resizeEvent(event);
    place();
}

void WeekCanvas::place() {
    // Room that the widest columns leave over is shared by both sides.
    const int rest = std::max(width() - widthOf(week_.columnWidth), 0) / 2;
    week_.left = WeekPicture::margin + rest;
    std::vector<Day> days;
    days.reserve(week_.days.size());
    for (std::size_t i = 0; i < week_.days.size(); ++i) {
        const WeekDay& day = week_.days[i];
        days.push_back({day.column.date, week_.dayRectangle(static_cast<int>(i)), names_[i]});
    }
    setDays(std::move(days));
}

QString WeekCanvas::tipAt(const QPointF& point) const {
    const int index = dayAt(point);
    if (index < 0) return {};
    const WeekTimelineColumn& column = week_.days[static_cast<std::size_t>(index)].column;
    if (const auto* const bar = topmostAt(point, column.projects, week_, index))
        return tipOf(bar->name, column.date, bar->geometry);
    if (const auto* const bar = topmostAt(point, column.activities, week_, index))
        return tipOf(bar->name, column.date, bar->geometry);
    return {};
}

void WeekCanvas::paintEvent(QPaintEvent* event) {
    week_.hovered = hoveredDay();
    week_.ringed = ringedDay();
    QPainter painter(this);
    // The days run from left to right in every language.
    painter.setLayoutDirection(Qt::LeftToRight);
    paintWeek(painter, week_, event->rect());
}

}  // namespace quorvane
