#include "shell/look/HouseStyleParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <algorithm>

namespace quorvane::HouseStyleParts {
namespace {

constexpr int itemHeight = 30;
constexpr int itemPadding = 10;
constexpr int glyphSize = 16;
constexpr int glyphGap = 8;
constexpr int separatorHeight = 11;
constexpr int shortcutGap = 28;
constexpr int leastThumb = 28;
constexpr int progressThickness = 6;

bool hasGlyphs(const QStyleOptionMenuItem& option) {
    return option.maxIconWidth > 0 || option.menuHasCheckableItems;
}

int textStart(const QStyleOptionMenuItem& option) {
    return itemPadding + (hasGlyphs(option) ? glyphSize + glyphGap : 0);
}

void drawGlyph(const QStyleOptionMenuItem& option, QPainter& painter, const QColor& ink) {
    const QRect place(option.rect.left() + itemPadding, option.rect.top(), glyphSize, option.rect.height());
    const QRect visual = QStyle::visualRect(option.direction, option.rect, place);
    if (option.checkType != QStyleOptionMenuItem::NotCheckable) {
        if (option.checked) drawControlIcon(painter, visual, icon(QStringLiteral("check")), ink, glyphSize, option);
    } else if (!option.icon.isNull()) {
        drawControlIcon(painter, visual, option.icon, ink, glyphSize, option);
    }
}

}  // namespace

void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter) {
    const Theme& t = theme();
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect& place = option.rect;
        return painter.fillRect(place.left() + 4, place.center().y(), place.width() - 8, 1, t.line2);
    }
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    if (isEnabled && option.state.testFlag(QStyle::State_Selected)) paintPanel(painter, option.rect, 6, t.hover, {});
    drawGlyph(option, painter, isEnabled ? t.text2 : faint());
    const QString words = option.text.section(QLatin1Char('\t'), 0, 0);
    const QString shortcut = option.text.section(QLatin1Char('\t'), 1);
    const QRect place = option.rect.adjusted(textStart(option), 0, -itemPadding, 0);
    const QRect visual = QStyle::visualRect(option.direction, option.rect, place);
    const auto at = [&](Qt::Alignment alignment) {
        return static_cast<int>(QStyle::visualAlignment(option.direction, alignment)) | Qt::AlignVCenter |
               Qt::TextSingleLine | Qt::TextShowMnemonic;
    };
    painter.setFont(option.font);
    painter.setPen(isEnabled ? t.text : t.text3);
    painter.drawText(visual, at(Qt::AlignLeft), words);
    painter.setPen(t.text3);
    painter.drawText(visual, at(Qt::AlignRight), shortcut);
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRect end(option.rect.right() + 1 - itemPadding - glyphSize, place.top(), glyphSize, place.height());
        drawControlIcon(painter, QStyle::visualRect(option.direction, option.rect, end), icon(QStringLiteral("right")),
                        t.text2, glyphSize, option);
    }
}

QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator) return {contents.width(), separatorHeight};
    const int shortcut = option.reservedShortcutWidth > 0 ? option.reservedShortcutWidth + shortcutGap : 0;
    const int words =
        option.fontMetrics.size(Qt::TextShowMnemonic, option.text.section(QLatin1Char('\t'), 0, 0)).width();
    return {textStart(option) + words + shortcut + itemPadding + shortcutGap,
            std::max(itemHeight, option.fontMetrics.height() + 10)};
}

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const bool isUpright = option.orientation == Qt::Vertical;
    const QRect& bar = option.rect;
    const int length = isUpright ? bar.height() : bar.width();
    const int range = option.maximum - option.minimum;
    const auto share = static_cast<double>(option.pageStep) / (static_cast<double>(range) + option.pageStep);
    const int thumb =
        range > 0 ? std::clamp(static_cast<int>(share * length), std::min(leastThumb, length), length) : length;
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                      length - thumb, option.upsideDown);
    const auto between = [&](int from, int to) {
        return isUpright ? QRect(bar.left(), bar.top() + from, bar.width(), to - from)
                         : QRect(bar.left() + from, bar.top(), to - from, bar.height());
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider: return between(start, start + thumb);
    case QStyle::SC_ScrollBarSubPage: return between(0, start);
    case QStyle::SC_ScrollBarAddPage: return between(start + thumb, length);
    case QStyle::SC_ScrollBarGroove: return bar;
    default: return {};  // no buttons at the ends
    }
}

void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter) {
    if (option.maximum <= option.minimum) return;
    const bool isHeld = option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider) &&
                        (isHovered(option) || option.state.testFlag(QStyle::State_Sunken));
    const QRectF thumb =
        QStyle::visualRect(option.direction, option.rect, scrollBarPart(option, QStyle::SC_ScrollBarSlider));
    const double side = isHeld ? 0 : 2;
    const bool isUpright = option.orientation == Qt::Vertical;
    const QRectF shown = isUpright ? thumb.adjusted(side, 2, -side, -2) : thumb.adjusted(2, side, -2, -side);
    const double radius = std::min(shown.width(), shown.height()) / 2;
    paintPanel(painter, shown, radius, withOpacity(theme().grey, theme().isHighContrast ? 1 : 0.45), {});
}

void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter) {
    QRect line = option.rect;
    line.setHeight(std::min(progressThickness, line.height()));
    line.moveCenter(option.rect.center());
    const double radius = line.height() / 2.0;
    paintPanel(painter, line, radius, theme().press, theme().isHighContrast ? theme().control : QColor());
    if (option.maximum <= option.minimum || option.progress <= option.minimum) return;
    const double part = static_cast<double>(option.progress - option.minimum) / (option.maximum - option.minimum);
    QRect done = line;
    done.setWidth(static_cast<int>(part * line.width()));
    paintPanel(painter, QStyle::visualRect(option.direction, line, done), radius, theme().accFill, {});
}

}  // namespace quorvane::HouseStyleParts
