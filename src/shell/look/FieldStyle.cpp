#include "shell/look/HouseStyleParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Kind.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <algorithm>

namespace quorvane::HouseStyleParts {
namespace {

constexpr int arrowWidth = 28;
constexpr int spinWidth = 22;
constexpr int arrowSize = 16;
constexpr int spinArrowSize = 12;

int fieldPadding(const QWidget* widget) {
    return isKind(widget, "small") ? 7 : 9;
}

QColor fieldGround(const QStyleOption& option, const QWidget* widget) {
    const Theme& t = theme();
    if (!option.state.testFlag(QStyle::State_Enabled)) return t.sunken;
    return t.isDark && !isKind(widget, "quiet") ? t.sunken : t.surface;
}

QColor fieldEdge(const QStyleOption& option, const QWidget* widget) {
    const Theme& t = theme();
    if (!option.state.testFlag(QStyle::State_Enabled)) return t.line;
    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    if (isKind(widget, "quiet")) return hasFocus || isHovered(option) ? t.control : t.line;
    return hasFocus ? t.accent : t.control;
}

QRect atEnd(const QStyleOption& option, int width) {
    const QRect& whole = option.rect;
    return QStyle::visualRect(option.direction, whole,
                              QRect(whole.right() + 1 - width, whole.top(), width, whole.height()));
}

QRect beforeEnd(const QStyleOption& option, int width, const QWidget* widget) {
    const QRect inside = option.rect.adjusted(fieldPadding(widget), 1, -width, -1);
    return QStyle::visualRect(option.direction, option.rect, inside);
}

void drawArrow(const QString& name, const QRect& place, int size, const QStyleOption& option, QPainter& painter) {
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    drawControlIcon(painter, place, icon(name), isEnabled ? theme().text2 : faint(), size, option);
}

}  // namespace

void drawField(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    paintPanel(painter, option.rect, controlRadius(widget), fieldGround(option, widget), fieldEdge(option, widget));
    if (!isKind(widget, "error")) return;
    const int radius = controlRadius(widget);
    paintPanel(painter, option.rect, radius, {}, theme().bad);
    paintPanel(painter, option.rect.adjusted(1, 1, -1, -1), radius - 1, {}, theme().bad);
}

QSize fieldSize(const QStyleOption& option, const QSize& contents, const QWidget* widget) {
    return {contents.width() + 2 * fieldPadding(widget) + 4, controlHeight(option, widget)};
}

QRect fieldContents(const QStyleOption& option, const QWidget* widget) {
    // What is inside a combo or a spin box has been placed by those.
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    if (frame != nullptr && frame->lineWidth == 0) return option.rect;
    const int padding = fieldPadding(widget);
    return option.rect.adjusted(padding, 1, -padding, -1);
}

void drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) {
    drawField(option, painter, widget);
    drawArrow(QStringLiteral("down"), atEnd(option, arrowWidth), arrowSize, option, painter);
}

void drawComboLabel(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) {
    if (option.editable) return;
    QRect place =
        QStyle::visualRect(option.direction, option.rect, comboPart(option, QStyle::SC_ComboBoxEditField, widget));
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    if (!option.currentIcon.isNull()) {
        const QRect iconPlace(place.left(), place.top(), arrowSize, place.height());
        drawControlIcon(painter, QStyle::visualRect(option.direction, option.rect, iconPlace), option.currentIcon,
                        isEnabled ? theme().text2 : faint(), arrowSize, option);
        place.adjust(arrowSize + 6, 0, 0, 0);
    }
    const auto alignment = QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.setPen(isEnabled ? theme().text : faint());
    painter.drawText(QStyle::visualRect(option.direction, option.rect, place), static_cast<int>(alignment),
                     option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, place.width()));
}

QRect comboPart(const QStyleOption& option, QStyle::SubControl part, const QWidget* widget) {
    switch (part) {
    case QStyle::SC_ComboBoxArrow: return atEnd(option, arrowWidth);
    case QStyle::SC_ComboBoxEditField: return beforeEnd(option, arrowWidth, widget).adjusted(2, 0, -2, 0);
    default: return option.rect;
    }
}

void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) {
    drawField(option, painter, widget);
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons) return;
    for (const auto part : {QStyle::SC_SpinBoxUp, QStyle::SC_SpinBoxDown}) {
        const QRect place = spinBoxPart(option, part, widget);
        const bool isActive = option.activeSubControls == part && isHovered(option);
        if (isActive) paintPanel(painter, QRectF(place).adjusted(2, 2, -2, -2), 5, theme().hover, {});
        const bool isUp = part == QStyle::SC_SpinBoxUp;
        drawArrow(isUp ? QStringLiteral("up") : QStringLiteral("down"), place, spinArrowSize, option, painter);
    }
}

QRect spinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part, const QWidget* widget) {
    const bool hasButtons = option.buttonSymbols != QAbstractSpinBox::NoButtons;
    const QRect buttons = atEnd(option, spinWidth);
    const int half = buttons.height() / 2;
    switch (part) {
    case QStyle::SC_SpinBoxUp: return hasButtons ? QRect(buttons.left(), buttons.top(), spinWidth, half) : QRect();
    case QStyle::SC_SpinBoxDown:
        return hasButtons ? QRect(buttons.left(), buttons.top() + half, spinWidth, buttons.height() - half) : QRect();
    case QStyle::SC_SpinBoxEditField: return beforeEnd(option, hasButtons ? spinWidth : fieldPadding(widget), widget);
    default: return option.rect;
    }
}

}  // namespace quorvane::HouseStyleParts
