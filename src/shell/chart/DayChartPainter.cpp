#include "shell/chart/DayChartPainter.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvane::DayChartPainter {
namespace {

constexpr double padding = 10;
constexpr double headTop = 6;
constexpr double headHeight = 16;
constexpr double titleHeight = 15;
constexpr double gap = 8;  // between texts, and before a bar
constexpr double leastForGapText = 12;
constexpr int moon = 12;
constexpr double leastForName = 15;
constexpr double leastForDuration = 22;
constexpr double leastForHead = 26;  // below it texts are centred
constexpr double leastForTitle = 44;
constexpr double leastText = 20;  // what is narrower says nothing
constexpr double barOpacity = 0.6;
constexpr double edgeOpacity = 0.3;

/// Looking fonts up costs more than a short text, so it is done once for a strip.
struct BlockFonts {
    QFont name = font(TypeRole::label);
    QFont small = font(TypeRole::caption);
    BlockFonts() { name.setWeight(QFont::DemiBold); }
};

void paintGridLine(QPainter& painter, const DayTimelineGeometry::GridLine& line, double width) {
    using enum DayTimelineGeometry::GridLine::Form;
    QPen pen(withOpacity(theme().grey, line.opacity), 1);
    pen.setCapStyle(Qt::FlatCap);
    if (line.form == half) pen.setDashPattern({6, 6});
    if (line.form == quarter) pen.setDashPattern({2, 2});
    const double y = crisp(line.y, painter.device()->devicePixelRatioF());
    painter.setPen(pen);
    painter.drawLine(QPointF(DayTimelineGeometry::gutterWidth, y), QPointF(width, y));
}

/// The bars over a part of a block, from left to right.
std::vector<QRectF> barsOver(const DayChartScene& scene, const QRectF& part) {
    std::vector<QRectF> bars;
    for (const DayChartBar& bar : scene.bars)
        if (bar.frame.intersects(part)) bars.push_back(bar.frame);
    std::ranges::sort(bars, {}, &QRectF::left);
    return bars;
}

/// What is free of bars at the beginning of a line of text, or behind those that lie over its beginning.
QRectF freeOf(const std::vector<QRectF>& bars, QRectF line) {
    for (const QRectF& bar : bars) {
        if (bar.left() - gap - line.left() >= leastText) {
            line.setRight(std::min(line.right(), bar.left() - gap));
            break;
        }
        line.setLeft(std::max(line.left(), bar.right() + gap));
    }
    return line;
}

void paintElided(QPainter& painter, const QRectF& rectangle, const QString& text) {
    if (rectangle.width() < leastText) return;
    const QFontMetricsF metrics(painter.font());
    if (metrics.ascent() + metrics.descent() > rectangle.height() + 1) return;  // never clipped
    painter.drawText(rectangle, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     metrics.elidedText(text, Qt::ElideRight, rectangle.width()));
}

void paintTexts(QPainter& painter, const DayChartScene& scene, const DayChartBlock& block, const BlockFonts& fonts) {
    const QRectF& frame = block.frame;
    if (frame.height() < leastForName) return;
    painter.setPen(inkOn(block.color));
    const bool isLow = frame.height() < leastForHead;
    QRectF head = isLow ? frame : QRectF(frame.left(), frame.top() + headTop, frame.width(), headHeight);
    head.adjust(padding, 0, -padding, 0);
    const auto bars =
        barsOver(scene, {frame.left(), frame.top(), frame.width(), isLow ? frame.height() : headTop + headHeight});
    if (frame.height() >= leastForDuration) {
        const double width = QFontMetricsF(fonts.small).horizontalAdvance(block.duration);
        const QRectF place(head.right() - width, head.top(), width, head.height());
        const auto hides = [&](const QRectF& bar) { return bar.intersects(place); };
        if (place.left() >= head.left() && std::ranges::none_of(bars, hides)) {
            painter.setFont(fonts.small);
            painter.drawText(place, Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextDontClip,
                             block.duration);
            head.setRight(place.left() - gap);
        }
    }
    if (!block.showsName) return;
    head = freeOf(bars, head);
    painter.setFont(fonts.name);
    paintElided(painter, head, block.name);
    const double headBottom = headTop + headHeight + titleHeight;
    if (frame.height() < leastForTitle ||
        !barsOver(scene, {frame.topLeft(), QSizeF(frame.width(), headBottom)}).empty())
        return;
    painter.setFont(fonts.small);
    paintElided(painter, {head.left(), frame.top() + headTop + headHeight, frame.width() - 2 * padding, titleHeight},
                block.title);
}

/// One pixel inside the block's outline. A stroked path costs as much as a hundred filled rectangles, so the sides are
/// rectangles, and only blocks that are high enough to show them have round corners.
void paintInnerEdge(QPainter& painter, const QRectF& frame) {
    const QColor edge = withOpacity(Qt::white, edgeOpacity);
    const QRectF inner = frame.adjusted(1, 1, -1, -1);
    constexpr double corner = Metrics::blockRadius - 1;
    const double width = inner.width() - 2 * corner;
    const double height = inner.height() - 2 * corner;
    painter.fillRect(QRectF(inner.left() + corner, inner.top(), width, 1), edge);
    painter.fillRect(QRectF(inner.left() + corner, inner.bottom() - 1, width, 1), edge);
    painter.fillRect(QRectF(inner.left(), inner.top() + corner, 1, height), edge);
    painter.fillRect(QRectF(inner.right() - 1, inner.top() + corner, 1, height), edge);
    if (frame.height() < leastForName) return;
    QPen pen(edge, 1);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    const QRectF line = inner.adjusted(0.5, 0.5, -0.5, -0.5);
    constexpr double size = 2 * corner - 1;
    constexpr int quarter = 90 * 16;  // Qt counts sixteenths of a degree
    painter.drawArc(QRectF(line.right() - size, line.top(), size, size), 0, quarter);
    painter.drawArc(QRectF(line.left(), line.top(), size, size), quarter, quarter);
    painter.drawArc(QRectF(line.left(), line.bottom() - size, size, size), 2 * quarter, quarter);
    painter.drawArc(QRectF(line.right() - size, line.bottom() - size, size, size), 3 * quarter, quarter);
}

/// Sunken; dashes around it say that it waits for an answer.
void paintGap(QPainter& painter, const DayChartGap& away) {
    const QRectF frame = snapped(painter, away.frame);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme().sunken);
    painter.drawRoundedRect(frame, Metrics::blockRadius, Metrics::blockRadius);
    if (!away.isLeftEmpty && frame.height() >= leastForGapText) {
        QPen dashes(theme().control, 1);
        dashes.setDashPattern({4, 4});
        painter.setPen(dashes);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), Metrics::blockRadius, Metrics::blockRadius);
    }
    if (frame.height() < leastForGapText) return;
    const QString text = away.text + QStringLiteral("   ") + away.duration;
    painter.setFont(font(frame.height() < leastForName ? TypeRole::bar : TypeRole::caption));
    painter.setPen(theme().text2);
    const QFontMetricsF metrics(painter.font());
    const QString shown = metrics.elidedText(text, Qt::ElideRight, frame.width() - 2 * padding - moon - gap);
    const double width = metrics.horizontalAdvance(shown) + moon + gap;
    QRectF line(frame.left() + (frame.width() - width) / 2, frame.top(), width, frame.height());
    drawIcon(painter, {line.left(), line.center().y() - moon / 2.0, moon, moon}, "moon", theme().text2, moon,
             Qt::LeftToRight);
    line.setLeft(line.left() + moon + gap);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextDontClip, shown);
}

void paintShape(QPainter& painter, const DayChartBlock& block, bool hasEdge) {
    const QRectF frame = snapped(painter, block.frame);
    painter.setPen(Qt::NoPen);
    painter.setBrush(block.color);
    painter.drawRoundedRect(frame, Metrics::blockRadius, Metrics::blockRadius);
    if (hasEdge) paintInnerEdge(painter, frame);
}

}  // namespace

double snapped(const QPainter& painter, double position) {
    const double ratio = painter.device()->devicePixelRatioF();
    return std::round(position * ratio) / ratio;
}

QRectF snapped(const QPainter& painter, const QRectF& rectangle) {
    return {QPointF(snapped(painter, rectangle.left()), snapped(painter, rectangle.top())),
            QPointF(snapped(painter, rectangle.right()), snapped(painter, rectangle.bottom()))};
}

void paintBlock(QPainter& painter, const DayChartScene& scene, const DayChartBlock& block, bool hasEdge) {
    painter.setRenderHint(QPainter::Antialiasing);
    paintShape(painter, block, hasEdge);
    paintTexts(painter, scene, block, BlockFonts());
}

void paintBar(QPainter& painter, const DayChartBar& bar) {
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = snapped(painter, bar.frame);
    const QColor fill = toQColor(bar.tone.fill);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(fill, barOpacity));
    painter.drawRoundedRect(frame, Metrics::blockRadius, Metrics::blockRadius);
    painter.setPen(QPen(fill, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(frame.adjusted(1, 1, -1, -1), Metrics::blockRadius - 1, Metrics::blockRadius - 1);
    painter.setFont(font(TypeRole::bar));
    painter.setPen(Qt::black);
    const double height = lineHeight(TypeRole::bar);
    if (frame.height() < height + 2) return;
    paintElided(painter, {frame.left() + 5, frame.top() + 3, frame.width() - 10, height}, bar.name);
}

void paintStrip(QPainter& painter, const DayChartScene& scene, double top, double bottom) {
    const auto isWithin = [&](const QRectF& frame) { return frame.top() < bottom + 1 && frame.bottom() > top - 1; };
    painter.setRenderHint(QPainter::Antialiasing, false);  // the lines are sharp, and hundreds of dashes then cheap
    for (const auto& line : scene.grid)
        if (line.y >= top - 1 && line.y <= bottom + 1) paintGridLine(painter, line, scene.width);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const DayChartGap& away : scene.gaps)
        if (isWithin(away.frame)) paintGap(painter, away);
    const BlockFonts fonts;
    for (const DayChartBlock& block : scene.blocks) {
        if (!isWithin(block.frame)) continue;
        paintShape(painter, block, true);
        paintTexts(painter, scene, block, fonts);
    }
    for (const DayChartBar& bar : scene.bars)
        if (isWithin(bar.frame)) paintBar(painter, bar);
}

}  // namespace quorvane::DayChartPainter
