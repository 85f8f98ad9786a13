#include "shell/look/HouseStyleParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Kind.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QIcon>
#include <QPainter>
#include <algorithm>

namespace quorvane::HouseStyleParts {
namespace {

/// The ground of a chip or a well by its tone.
QColor toneGround(const QWidget* widget) {
    const Theme& t = theme();
    if (isKind(widget, "info")) return t.accSoft;
    if (isKind(widget, "ok")) return t.okSoft;
    if (isKind(widget, "warn")) return t.warnSoft;
    if (isKind(widget, "bad")) return t.badSoft;
    return t.sunken;
}

}  // namespace

QColor faint() {
    return withOpacity(theme().text3, 0.75);
}

void drawControlIcon(QPainter& painter, const QRect& place, const QIcon& icon, const QColor& ink, int size,
                     const QStyleOption& option) {
    if (const QString name = iconName(icon); !name.isEmpty())
        return drawIcon(painter, place, name, ink, size, option.direction);
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    QRect square(0, 0, size, size);
    square.moveCenter(place.center());
    icon.paint(&painter, square, Qt::AlignCenter, isEnabled ? QIcon::Normal : QIcon::Disabled);
}

bool isHovered(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled);
}

int controlHeight(const QStyleOption& option, const QWidget* widget) {
    int least = Metrics::controlHeight;
    if (isKind(widget, "small")) least = Metrics::smallHeight;
    if (isKind(widget, "large")) least = Metrics::largeHeight;
    if (isKind(widget, "navigation")) least = Metrics::navigationHeight;
    return std::max(least, option.fontMetrics.height() + 8);
}

int controlRadius(const QWidget* widget) {
    return isKind(widget, "small") ? Metrics::smallRadius : Metrics::controlRadius;
}

void drawFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const Theme& t = theme();
    // The option's is less the margins of what stands inside.
    const QRect place = widget != nullptr ? widget->rect() : option.rect;
    if (isKind(widget, "card")) return paintPanel(painter, place, Metrics::cardRadius, t.surface, t.line);
    if (isKind(widget, "rule")) return painter.fillRect(place, t.line2);
    // With strong contrast asked for, a pale ground alone is no shape.
    const QColor edge = t.isHighContrast ? t.control : QColor();
    if (isKind(widget, "well")) return paintPanel(painter, place, Metrics::controlRadius, toneGround(widget), edge);
    if (isKind(widget, "chip")) return paintPanel(painter, place, place.height() / 2.0, toneGround(widget), edge);
    if (isKind(widget, "menu")) return paintPanel(painter, option.rect, 0, t.surface, t.line);
    if (isKind(widget, "field")) return drawField(option, painter, widget);
}

void drawTableHead(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(option.rect, theme().sunken);
    painter.fillRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1, theme().line);
}

void drawRow(const QStyleOptionViewItem& option, QPainter& painter) {
    const Theme& t = theme();
    const bool isInMenu = isKind(option.widget, "menu");
    const bool isRound = isKind(option.widget, "round");
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isStriped = option.features.testFlag(QStyleOptionViewItem::Alternate);
    QColor ground = isStriped ? t.sunken : QColor();
    if (isHovered(option)) ground = t.hover;
    if (isSelected) ground = isInMenu ? t.hover : t.accSoft;
    const double radius = isInMenu ? 6 : isRound ? Metrics::controlRadius : 0;
    paintPanel(painter, option.rect, radius, ground, isSelected && isRound ? t.accent : QColor());
    if (option.widget == nullptr || !option.state.testFlag(QStyle::State_HasFocus)) return;
    // Inside, as rows have no distance.
    if (!isInMenu && showsFocusRing(*option.widget))
        paintFocusRing(painter, QRectF(option.rect).adjusted(4, 4, -4, -4), Metrics::blockRadius, ground);
}

}  // namespace quorvane::HouseStyleParts
