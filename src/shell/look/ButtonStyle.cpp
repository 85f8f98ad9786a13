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

constexpr int glyphSize = 16;
constexpr int iconGap = 8;
constexpr int menuWidth = 28;  // of the part of a split button that opens its menu
constexpr int labelFlags = Qt::TextShowMnemonic | Qt::TextSingleLine;

struct ButtonColors {
    QColor fill;  // invalid: none
    QColor edge;  // invalid: none
    QColor ink;
    QColor iconInk;
};

enum class Press { none, hovered, down };

Press pressOf(const QStyleOption& option) {
    if (option.state.testFlag(QStyle::State_Sunken)) return Press::down;
    return isHovered(option) ? Press::hovered : Press::none;
}

QColor filled(const QColor& rest, const QColor& hovered, Press press) {
    if (press == Press::none) return rest;
    return press == Press::hovered ? hovered : rest.darker(118);
}

QColor bare(Press press) {
    if (press == Press::none) return {};
    return press == Press::hovered ? theme().hover : theme().press;
}

bool isBare(const QStyleOption& option, const QWidget* widget) {
    if (isKind(widget, "ghost") || isKind(widget, "link") || isKind(widget, "navigation")) return true;
    return option.type == QStyleOption::SO_ToolButton && !isKind(widget, "plain") && !isKind(widget, "chip");
}

ButtonColors chosenColors(const QWidget* widget, Press press) {
    const Theme& t = theme();
    if (isKind(widget, "navigation")) return {t.surface, t.line, t.text, t.accent};
    if (isKind(widget, "toggle")) return {filled(t.accFill, t.accFillHover, press), {}, t.onFill, t.onFill};
    if (isKind(widget, "ok")) return {t.okSoft, t.isHighContrast ? t.control : t.okSoft, t.ok, t.ok};
    if (isKind(widget, "quiet")) return {t.sunken, t.line, t.text2, t.text2};
    return {press == Press::down ? t.press : t.accSoft, t.accent, t.accInk, t.accInk};
}

ButtonColors colorsOf(const QStyleOption& option, const QWidget* widget) {
    const Theme& t = theme();
    const bool isWithoutEdge = isBare(option, widget);
    if (!option.state.testFlag(QStyle::State_Enabled))
        return {isWithoutEdge ? QColor() : t.sunken, isWithoutEdge ? QColor() : t.line, faint(), faint()};
    const Press press = pressOf(option);
    if (option.state.testFlag(QStyle::State_On)) return chosenColors(widget, press);
    const QColor onSurface = press == Press::none ? t.surface : bare(press);
    if (isKind(widget, "primary")) return {filled(t.accFill, t.accFillHover, press), {}, t.onFill, t.onFill};
    if (isKind(widget, "dangerFill")) return {filled(t.badFill, t.badFill.darker(110), press), {}, t.onFill, t.onFill};
    if (isKind(widget, "danger")) return {press == Press::none ? t.surface : t.badSoft, t.line, t.bad, t.bad};
    if (isKind(widget, "link")) return {bare(press), {}, t.accent, t.accent};
    if (isKind(widget, "toggle")) return {onSurface, t.control, t.text2, t.text2};
    if (isKind(widget, "chip")) return {onSurface, t.control, t.text, t.text};
    if (isWithoutEdge) return {bare(press), {}, t.text2, t.text2};
    return {onSurface, t.line, t.text, t.text2};
}

int padding(const QWidget* widget) {
    if (isKind(widget, "small")) return 11;
    return isKind(widget, "large") ? 17 : 13;
}

/// What is written on a button, before it is placed.
struct Label {
    QString text;
    QIcon icon;
    bool hasArrow = false;  ///< of a menu

    [[nodiscard]] bool isIconAlone() const { return text.isEmpty() && !icon.isNull(); }
    [[nodiscard]] int besideText() const {
        return (icon.isNull() ? 0 : glyphSize + iconGap) + (hasArrow ? glyphSize + iconGap / 2 : 0);
    }
};

/// A chosen chip has a check before its text.
Label labelOf(const QStyleOptionButton& option, const QWidget* widget) {
    const bool hasCheck = isKind(widget, "chip") && option.state.testFlag(QStyle::State_On);
    return {.text = option.text,
            .icon = hasCheck ? icon(QStringLiteral("check")) : option.icon,
            .hasArrow = option.features.testFlag(QStyleOptionButton::HasMenu)};
}

bool isSplit(const QStyleOptionToolButton& option) {
    return option.features.testFlag(QStyleOptionToolButton::MenuButtonPopup);
}

Label labelOf(const QStyleOptionToolButton& option) {
    const bool hasText = option.toolButtonStyle != Qt::ToolButtonIconOnly || option.icon.isNull();
    const bool hasMenu = option.features.testFlag(QStyleOptionToolButton::HasMenu) && !isSplit(option);
    return {.text = hasText ? option.text : QString(), .icon = option.icon, .hasArrow = hasMenu && hasText};
}

QSize sizeOf(const Label& label, const QStyleOption& option, const QWidget* widget) {
    const int height = controlHeight(option, widget);
    if (label.isIconAlone()) return {height, height};
    const int textWidth = option.fontMetrics.size(labelFlags, label.text).width();
    return {textWidth + 2 * padding(widget) + label.besideText(), height};
}

void draw(const Label& label, const QStyleOption& option, const QRect& face, QPainter& painter, const QWidget* widget) {
    const ButtonColors colors = colorsOf(option, widget);
    if (label.isIconAlone()) return drawControlIcon(painter, face, label.icon, colors.iconInk, glyphSize, option);
    const int room = std::max(0, face.width() - 2 * padding(widget) - label.besideText() + 2);
    QString shown = label.text;
    if (option.fontMetrics.size(labelFlags, shown).width() > room)
        shown = option.fontMetrics.elidedText(shown, Qt::ElideRight, room, Qt::TextShowMnemonic);
    const int textWidth = option.fontMetrics.size(labelFlags, shown).width();
    const bool isAtStart = isKind(widget, "navigation");
    int x = isAtStart ? face.left() + padding(widget) - 2
                      : face.left() + (face.width() - textWidth - label.besideText()) / 2;
    const auto part = [&](int width) {
        const QRect leftToRight(x, face.top(), width, face.height());
        return QStyle::visualRect(option.direction, option.rect, leftToRight);
    };
    if (!label.icon.isNull()) {
        drawControlIcon(painter, part(glyphSize), label.icon, colors.iconInk, glyphSize, option);
        x += glyphSize + iconGap + (isAtStart ? 3 : 0);
    }
    painter.setPen(colors.ink);
    painter.drawText(part(textWidth), labelFlags | Qt::AlignCenter, shown);
    x += textWidth + iconGap / 2;
    if (label.hasArrow)
        drawControlIcon(painter, part(glyphSize), icon(QStringLiteral("down")), colors.iconInk, glyphSize, option);
}

}  // namespace

void drawButtonPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const ButtonColors colors = colorsOf(option, widget);
    const double radius = isKind(widget, "chip") ? option.rect.height() / 2.0 : controlRadius(widget);
    paintPanel(painter, option.rect, radius, colors.fill, colors.edge);
}

void drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) {
    draw(labelOf(option, widget), option, option.rect, painter, widget);
}

void drawToolButton(const QStyleOptionToolButton& option, QPainter& painter, const QWidget* widget) {
    drawButtonPanel(option, painter, widget);
    if (!isSplit(option)) return draw(labelOf(option), option, option.rect, painter, widget);
    // The two halves share the panel; a line stands between them.
    draw(labelOf(option), option, option.rect.adjusted(0, 0, -menuWidth, 0), painter, widget);
    const QRect& whole = option.rect;
    const QRect arrow = QStyle::visualRect(option.direction, whole, whole.adjusted(whole.width() - menuWidth, 0, 0, 0));
    const QRect line(whole.right() - menuWidth, whole.top() + 1, 1, whole.height() - 2);
    painter.fillRect(QStyle::visualRect(option.direction, whole, line), theme().line);
    drawControlIcon(painter, arrow, icon(QStringLiteral("down")), theme().text2, glyphSize, option);
}

QSize buttonSize(const QStyleOptionButton& option, const QWidget* widget) {
    return sizeOf(labelOf(option, widget), option, widget);
}

QSize toolButtonSize(const QStyleOptionToolButton& option, const QWidget* widget) {
    return sizeOf(labelOf(option), option, widget) + QSize(isSplit(option) ? menuWidth : 0, 0);
}

}  // namespace quorvane::HouseStyleParts
