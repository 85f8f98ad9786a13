#include "shell/chart/MonthCellPainter.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>

namespace quorvane {
namespace {

constexpr double sidePadding = 7;
constexpr double topPadding = 5;  ///< with the edge
constexpr double headHeight = 18;
constexpr double firstLine = topPadding + headHeight + 2;
constexpr double lineStep = 13;
constexpr double nameLeft = 8;    ///< from the mark
constexpr double leastName = 36;  ///< below this width a name needs the duration's room
constexpr double gapToDuration = 5;

QRectF inner(const QRectF& cell) {
    return cell.adjusted(sidePadding, 0, -sidePadding, 0);
}

void paintGround(QPainter& painter, const MonthCellPicture& picture) {
    const bool isToday = picture.cell.isToday;
    const QColor color = isToday ? theme().accent : theme().grey;
    const double strength = picture.isHovered ? 0.06 : 0;
    const QColor fill = onGround(color, (isToday ? 0.08 : 0.06) + strength, theme().surface);
    paintPanel(painter, picture.rectangle, monthCellRadius, fill,
               isToday ? color : onGround(color, 0.25 + 4 * strength, fill));
}

void paintHead(QPainter& painter, const MonthCellPicture& picture) {
    const QRectF row = inner(picture.rectangle);
    const QRectF head(row.left(), row.top() + topPadding, row.width(), headHeight);
    const QString number = QString::number(picture.cell.dayOfMonth);
    QFont numberFont = font(TypeRole::label);
    numberFont.setWeight(QFont::DemiBold);
    painter.setFont(numberFont);
    if (picture.cell.isToday) {
        const QRectF pill(head.left(), head.top(), figuresWidth(numberFont, number) + 14, headHeight);
        paintPanel(painter, pill, headHeight / 2, theme().accFill, {});
        painter.setPen(theme().onFill);
        drawFigures(painter, pill, Qt::AlignCenter, number);
    } else {
        painter.setPen(picture.isComing ? theme().text3 : theme().text);
        drawFigures(painter, head, Qt::AlignLeft | Qt::AlignVCenter, number);
    }
    painter.setFont(font(TypeRole::caption));
    painter.setPen(theme().text2);
    drawFigures(painter, head, Qt::AlignRight | Qt::AlignVCenter, picture.more);
}

void paintLine(QPainter& painter, const MonthCellLine& line, const QRectF& row) {
    const QRectF mark(row.left(), row.center().y() - 5, 3, 10);
    paintPanel(painter, mark, 1, toQColor(line.mark), {});
    painter.setFont(font(TypeRole::month));
    const QString duration = qt(line.duration);
    const double durationWidth = figuresWidth(painter.font(), duration);
    double nameWidth = row.width() - nameLeft - durationWidth - gapToDuration;
    if (nameWidth >= leastName) {
        painter.setPen(theme().text2);
        drawFigures(painter, row, Qt::AlignRight | Qt::AlignVCenter, duration);
    } else {
        nameWidth = row.width() - nameLeft;
    }
    painter.setPen(theme().text);
    painter.drawText(QRectF(row.left() + nameLeft, row.top(), nameWidth, row.height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetricsF(painter.font()).elidedText(qt(line.name), Qt::ElideRight, nameWidth));
}

QRectF lineRectangle(const QRectF& cell, std::size_t index) {
    const QRectF row = inner(cell);
    return {row.left(), row.top() + firstLine + static_cast<double>(index) * lineStep, row.width(), lineStep};
}

}  // namespace

void paintMonthCell(QPainter& painter, const MonthCellPicture& picture) {
    paintGround(painter, picture);
    paintHead(painter, picture);
    for (std::size_t i = 0; i < picture.cell.lines.size(); ++i)
        paintLine(painter, picture.cell.lines[i], lineRectangle(picture.rectangle, i));
    if (picture.cell.fallback) {
        painter.setFont(font(TypeRole::caption));
        painter.setPen(theme().text2);
        drawFigures(painter, lineRectangle(picture.rectangle, 0).adjusted(0, 1, 0, 6), Qt::AlignLeft | Qt::AlignVCenter,
                    qt(*picture.cell.fallback));
    }
}

int monthCellLineAt(const QPointF& point, const MonthSimpleCell& cell, const QRectF& rectangle) {
    for (std::size_t i = 0; i < cell.lines.size(); ++i)
        if (lineRectangle(rectangle, i).contains(point)) return static_cast<int>(i);
    return -1;
}

}  // namespace quorvane
