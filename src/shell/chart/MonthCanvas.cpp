#include "shell/chart/MonthCanvas.h"

#include "shell/chart/MonthCellPainter.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPaintEvent>
#include <QPainter>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

constexpr double margin = Metrics::timelineMargin;
constexpr double padding = Metrics::cardPadding;
constexpr double gap = 6;
constexpr double narrowestCell = 56;

double cellsTop() {
    return padding + lineHeight(TypeRole::label) + gap;
}

}  // namespace

MonthCanvas::MonthCanvas(QWidget* parent) : DayCells(parent) {
    setDaysInRow(7);
}

void MonthCanvas::setMonth(MonthPicture month) {
    month_ = std::move(month);
    place();
}

int MonthCanvas::rows() const {
    return (month_.grid.leading + static_cast<int>(month_.grid.cells.size()) + 6) / 7;
}

int MonthCanvas::heightNeeded() const {
    return static_cast<int>(cellsTop() + rows() * (MonthTimeline::cellHeight + gap) - gap + padding + margin);
}

int MonthCanvas::leastWidth() {
    return static_cast<int>(2 * (margin + padding) + 7 * narrowestCell + 6 * gap);
}

double MonthCanvas::cellWidth() const {
    return (width() - 2 * (margin + padding) - 6 * gap) / 7;
}

QRectF MonthCanvas::cellRectangle(int position) const {
    const int column = position % 7;
    const int row = position / 7;
    return {margin + padding + column * (cellWidth() + gap), cellsTop() + row * (MonthTimeline::cellHeight + gap),
            cellWidth(), MonthTimeline::cellHeight};
}

void MonthCanvas::place() {
    std::vector<Day> days;
    days.reserve(month_.grid.cells.size());
    for (std::size_t i = 0; i < month_.grid.cells.size(); ++i) {
        const MonthSimpleCell& cell = month_.grid.cells[i];
        days.push_back({cell.date, cellRectangle(month_.grid.leading + static_cast<int>(i)), month_.names[i]});
    }
    setDays(std::move(days));
}

void MonthCanvas::resizeEvent(QResizeEvent* event) {
    DayCells::resizeEvent(event);
    place();
}

QString MonthCanvas::tipAt(const QPointF& point) const {
    const int index = dayAt(point);
    if (index < 0) return {};
    const MonthSimpleCell& cell = month_.grid.cells[static_cast<std::size_t>(index)];
    const int line = monthCellLineAt(point, cell, day(index).rectangle);
    if (line < 0) return {};
    const MonthCellLine& item = cell.lines[static_cast<std::size_t>(line)];
    return qt(fmt::format("{}\n{}", item.name, item.duration));
}

void MonthCanvas::paintWeekdays(QPainter& painter) const {
    painter.setFont(quorvane::font(TypeRole::label));
    painter.setPen(theme().text2);
    for (int i = 0; i < static_cast<int>(month_.weekdays.size()); ++i)
        painter.drawText(QRectF(cellRectangle(i).left() + gap, padding, cellWidth() - gap, lineHeight(TypeRole::label)),
                         Qt::AlignLeft | Qt::AlignVCenter, month_.weekdays[static_cast<std::size_t>(i)]);
}

void MonthCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The days run from left to right in every language.
    painter.setLayoutDirection(Qt::LeftToRight);
    paintPanel(painter, QRectF(rect()).adjusted(margin, 0, -margin, -margin), Metrics::cardRadius, theme().surface,
               theme().line);
    paintWeekdays(painter);
    for (int i = 0; i < partCount(); ++i) {
        const auto place = static_cast<std::size_t>(i);
        const MonthSimpleCell& cell = month_.grid.cells[place];
        if (!day(i).rectangle.intersects(event->rect())) continue;
        paintMonthCell(painter, {.cell = cell,
                                 .rectangle = day(i).rectangle,
                                 .more = month_.more[place],
                                 .isComing = cell.date > month_.now,
                                 .isHovered = i == hoveredDay()});
    }
    if (const int ringed = ringedDay(); ringed >= 0)
        paintFocusRing(painter, day(ringed).rectangle, monthCellRadius, theme().surface);
}

}  // namespace quorvane
