#include "shell/look/HouseStyleParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Kind.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <algorithm>

namespace quorvane::HouseStyleParts {
namespace {

constexpr QSize switchSize{36, 20};
constexpr int thumbSize = 14;
constexpr int checkSide = 16;
constexpr int trayInset = 3;  // the tray's edge and 2 more
constexpr int segmentPadding = 14;
constexpr int tabHeight = 40;
constexpr int tabPadding = 13;
constexpr int tabIconSize = 16;
constexpr int tabGap = 8;
constexpr int underline = 2;
constexpr int cardHeight = 62;
constexpr int cardPadding = 15;
constexpr int cardTextStart = 45;

int cardWordsHeight() {
    return lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::labelPlain);
}

bool isOn(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_On);
}

bool isEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

void drawSwitch(const QStyleOption& option, QPainter& painter) {
    const Theme& t = theme();
    QColor ground = isOn(option) ? isHovered(option) ? t.accFillHover : t.accFill : t.control;
    if (!isEnabled(option)) ground = withOpacity(ground, 0.45);
    const QRectF track = option.rect;
    paintPanel(painter, track, track.height() / 2, ground, QColor());
    const double margin = (track.height() - thumbSize) / 2;
    const bool isRight = isOn(option) != (option.direction == Qt::RightToLeft);
    const double x = isRight ? track.right() - margin - thumbSize : track.left() + margin;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(t.onFill);
    painter.drawEllipse(QRectF(x, track.top() + margin, thumbSize, thumbSize));
}

struct IndicatorColors {
    QColor fill;
    QColor edge;
};

IndicatorColors indicatorColors(const QStyleOption& option) {
    const Theme& t = theme();
    if (!isEnabled(option))
        return isOn(option) ? IndicatorColors{t.control, t.control} : IndicatorColors{t.sunken, t.line};
    if (isOn(option)) return {t.accFill, t.accFill};
    return {t.isDark ? t.sunken : t.surface, isHovered(option) ? t.accent : t.control};
}

bool isSelected(const QStyleOptionTab& option) {
    return option.state.testFlag(QStyle::State_Selected);
}

/// The whole tray, of which each segment paints its own part, and the chosen one its raised plate.
void drawSegment(const QStyleOptionTab& option, QPainter& painter, const QWidget* widget) {
    const Theme& t = theme();
    painter.save();
    painter.setClipRect(option.rect);
    paintPanel(painter, widget != nullptr ? widget->rect() : option.rect, Metrics::controlRadius, t.sunken, t.line);
    const QRectF plate = QRectF(option.rect).adjusted(trayInset, trayInset, -trayInset, -trayInset);
    if (isSelected(option))
        paintPanel(painter, plate, Metrics::controlRadius - 2, t.segment, t.isDark ? QColor() : t.line);
    else if (isHovered(option))
        paintPanel(painter, plate, Metrics::controlRadius - 2, t.press, QColor());
    painter.restore();
}

}  // namespace

QSize indicatorSize(const QWidget* widget) {
    return isKind(widget, "switch") ? switchSize : QSize(checkSide, checkSide);
}

void drawCheckIndicator(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (isKind(widget, "switch")) return drawSwitch(option, painter);
    const auto [fill, edge] = indicatorColors(option);
    paintPanel(painter, option.rect, 5, fill, edge);
    if (isOn(option))
        drawControlIcon(painter, option.rect, icon(QStringLiteral("check")), theme().onFill, checkSide, option);
}

void drawChoiceCard(const QStyleOptionButton& option, QPainter& painter) {
    const Theme& t = theme();
    const QRect& whole = option.rect;
    const bool isHeld = option.state.testFlag(QStyle::State_Sunken);
    const QColor rest = isHeld ? t.press : isHovered(option) ? t.hover : t.surface;
    paintPanel(painter, whole, Metrics::cardRadius, isOn(option) ? t.accSoft : rest, isOn(option) ? t.accent : t.line);
    if (isOn(option)) paintPanel(painter, whole.adjusted(1, 1, -1, -1), Metrics::cardRadius - 1, {}, t.accent);
    const auto part = [&](int x, int y, int width, int height) {
        return QStyle::visualRect(option.direction, whole, QRect(whole.left() + x, whole.top() + y, width, height));
    };
    QStyleOptionButton box = option;
    box.rect = part(cardPadding, (whole.height() - checkSide) / 2, checkSide, checkSide);
    drawCheckIndicator(box, painter, nullptr);
    const int end = whole.width() - cardPadding - checkSide;
    drawControlIcon(painter, part(end, 0, checkSide, whole.height()), option.icon, t.text2, checkSide, option);
    const auto side = QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter);
    int y = (whole.height() - cardWordsHeight()) / 2;
    for (const QString& line : option.text.split(QLatin1Char('\n'))) {
        const bool isFirst = line.size() == option.text.indexOf(QLatin1Char('\n'));
        const TypeRole role = isFirst ? TypeRole::bodyStrong : TypeRole::labelPlain;
        const QRect place = part(cardTextStart, y, end - cardTextStart - tabGap, lineHeight(role));
        painter.setFont(font(role));
        painter.setPen(isFirst ? t.text : t.text3);
        painter.drawText(place, static_cast<int>(side) | Qt::TextShowMnemonic,
                         painter.fontMetrics().elidedText(line, Qt::ElideRight, place.width(), Qt::TextShowMnemonic));
        y += lineHeight(role);
    }
}

QSize choiceCardSize() {
    return {240, std::max(cardHeight, cardWordsHeight() + 20)};
}

void drawRadioIndicator(const QStyleOption& option, QPainter& painter) {
    const auto [fill, edge] = indicatorColors(option);
    paintPanel(painter, option.rect, checkSide / 2.0, fill, edge);
    if (isOn(option)) paintPanel(painter, QRectF(option.rect).adjusted(5, 5, -5, -5), 3, theme().onFill, {});
}

void drawTabShape(const QStyleOptionTab& option, QPainter& painter, const QWidget* widget) {
    if (isKind(widget, "segments")) return drawSegment(option, painter, widget);
    const QRect& place = option.rect;
    if (isSelected(option))
        painter.fillRect(place.left(), place.bottom() + 1 - underline, place.width(), underline, theme().accent);
}

void drawTabLabel(const QStyleOptionTab& option, QPainter& painter, const QWidget* widget) {
    const Theme& t = theme();
    const bool isSegment = isKind(widget, "segments");
    const bool isStrong = isSelected(option) || (!isSegment && isHovered(option));
    QRect place = option.rect;
    if (!option.icon.isNull()) {
        const QRect iconPlace(place.left() + tabPadding, place.top(), tabIconSize, place.height());
        drawControlIcon(painter, QStyle::visualRect(option.direction, option.rect, iconPlace), option.icon,
                        isSelected(option) ? t.accent : t.text2, tabIconSize, option);
        place.adjust(tabPadding + tabIconSize + tabGap, 0, -tabPadding, 0);
    }
    painter.setPen(!isEnabled(option) ? faint() : isStrong ? t.text : t.text2);
    const int room = place.width() - (option.icon.isNull() ? 4 : -2);
    painter.drawText(QStyle::visualRect(option.direction, option.rect, place), Qt::AlignCenter | Qt::TextShowMnemonic,
                     option.fontMetrics.elidedText(option.text, Qt::ElideRight, room, Qt::TextShowMnemonic));
}

QSize tabSize(const QStyleOptionTab& option, const QWidget* widget) {
    const int textWidth = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    if (isKind(widget, "segments")) {
        const int height = std::max(controlHeight(option, widget), option.fontMetrics.height() + 2 * trayInset + 4);
        return {textWidth + 2 * segmentPadding, height};
    }
    const int icon = option.icon.isNull() ? 0 : tabIconSize + tabGap;
    return {2 * tabPadding + icon + textWidth, std::max(tabHeight, option.fontMetrics.height() + 16)};
}

}  // namespace quorvane::HouseStyleParts
