#include "shell/chart/DayChartTooltip.h"

#include "shell/chart/AppIcon.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int margin = 12;  // around the card, for its shadow
constexpr int padding = 8;
constexpr int tile = 20;
constexpr int headHeight = 22;
constexpr int lineStep = 19;
constexpr int rangeLineStep = 17;
constexpr double shadowOpacity = 0.33;
constexpr double pointerDistance = 12;
constexpr double quietOpacity = 0.72;

/// Soft by layers: each a little larger and as faint as all of them together make the card's shadow.
void paintCardShadow(QPainter& painter, const QRectF& card) {
    constexpr int layers = 8;
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Qt::black, shadowOpacity / layers));
    for (int i = 0; i < layers; ++i)
        painter.drawRoundedRect(card.adjusted(-i, 4 - i, i, std::min(i + 4, margin - 1)), Metrics::controlRadius + i,
                                Metrics::controlRadius + i);
}

void paintLine(QPainter& painter, const QRectF& place, const std::string& text) {
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(qt(text), Qt::ElideRight, static_cast<int>(place.width())));
}

}  // namespace

DayChartTooltip::DayChartTooltip(const platform::ApplicationIcons& icons, QWidget* parent)
    : QWidget(parent), icons_(icons) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setLayoutDirection(Qt::LeftToRight);
    hide();
}

void DayChartTooltip::showBlock(const ProcessedActivityItem& item, const Localization& localization, QPointF topLeft,
                                const QRectF& bounds) {
    isBlock_ = true;
    lines_ = DayTimelineGeometry::tooltipLines(item, localization);
    std::erase(lines_, std::string());  // a window without a title
    appName_ = qt(lines_.front());
    color_ = toQColor(item.color);
    if (std::exchange(block_, item.id) != item.id) icon_ = appIcon(item, icons_);
    showAt(topLeft, bounds);
}

void DayChartTooltip::showRange(const std::vector<std::string>& lines, QPointF pointer, const QRectF& bounds) {
    isBlock_ = false;
    lines_ = lines;
    QPointF topLeft = pointer + QPointF(pointerDistance, pointerDistance);
    if (topLeft.x() + cardWidth > bounds.right()) topLeft.setX(pointer.x() - pointerDistance - cardWidth);
    if (topLeft.y() + cardHeight() > bounds.bottom()) topLeft.setY(pointer.y() - pointerDistance - cardHeight());
    showAt(topLeft, bounds);
}

int DayChartTooltip::cardHeight() const {
    const int count = static_cast<int>(lines_.size());
    return 2 * padding + (isBlock_ ? headHeight + (count - 1) * lineStep : count * rangeLineStep);
}

QRect DayChartTooltip::card() const {
    return geometry().adjusted(margin, margin, -margin, -margin);
}

void DayChartTooltip::showAt(QPointF topLeft, const QRectF& bounds) {
    const double x = std::max(std::min(topLeft.x(), bounds.right() - cardWidth), bounds.left());
    const double y = std::max(std::min(topLeft.y(), bounds.bottom() - cardHeight()), bounds.top());
    setGeometry(QRect(qRound(x), qRound(y), cardWidth, cardHeight()).adjusted(-margin, -margin, margin, margin));
    show();
    raise();
    update();
}

void DayChartTooltip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = rect().adjusted(margin, margin, -margin, -margin);
    paintCardShadow(painter, card);
    paintPanel(painter, card, Metrics::controlRadius, theme().tip, {});
    QRectF place(card.left() + padding, card.top() + padding, card.width() - 2 * padding, rangeLineStep);
    auto line = lines_.begin();
    if (isBlock_ && line != lines_.end()) {
        QRectF square(place.left(), place.top() + (headHeight - tile) / 2.0, tile, tile);
        if (icon_.isNull())
            paintAppTile(painter, square, color_, appName_);
        else
            icon_.paint(&painter, square.toRect());
        painter.setFont(quorvane::font(TypeRole::bodyStrong));
        painter.setPen(theme().tipText);
        paintLine(painter, {place.left() + tile + padding, place.top(), place.width() - tile - padding, headHeight},
                  *line++);
        place.translate(0, headHeight);
        place.setHeight(lineStep);
    }
    painter.setFont(quorvane::font(TypeRole::labelPlain));
    for (; line != lines_.end(); ++line) {
        // What is asked for stands out: the hours of a block, the times of a range.
        const bool isQuiet = isBlock_ ? line + 1 != lines_.end() : line != lines_.begin();
        painter.setPen(isQuiet ? withOpacity(theme().tipText, quietOpacity) : theme().tipText);
        paintLine(painter, place, *line);
        place.translate(0, place.height());
    }
}

}  // namespace quorvane
