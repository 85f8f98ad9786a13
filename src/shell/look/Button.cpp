#include "shell/look/Button.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int glyphSize = 16;
constexpr int iconGap = 8;

struct Colors {
    QColor fill;  // invalid: none
    QColor edge;  // invalid: none
    QColor ink;
    QColor iconInk;
};

enum class Press { none, hovered, down };

QColor filled(const QColor& rest, const QColor& hovered, Press press) {
    if (press == Press::none) return rest;
    return press == Press::hovered ? hovered : rest.darker(118);
}

QColor bare(Press press) {
    if (press == Press::none) return {};
    return press == Press::hovered ? theme().hover : theme().press;
}

Colors colorsOf(ButtonKind kind, Press press) {
    const Theme& t = theme();
    const QColor onSurface = press == Press::none ? t.surface : bare(press);
    switch (kind) {
    case ButtonKind::secondary: return {onSurface, t.line, t.text, t.text2};
    case ButtonKind::primary: return {filled(t.accFill, t.accFillHover, press), {}, t.onFill, t.onFill};
    case ButtonKind::destructive: return {press == Press::none ? t.surface : t.badSoft, t.line, t.bad, t.bad};
    case ButtonKind::destructiveFill: return {filled(t.badFill, t.badFill.darker(110), press), {}, t.onFill, t.onFill};
    case ButtonKind::ghost: return {bare(press), {}, t.text2, t.text2};
    case ButtonKind::link: return {bare(press), {}, t.accent, t.accent};
    }
    return {};
}

Colors disabledColors(ButtonKind kind) {
    const Theme& t = theme();
    const QColor ink = withOpacity(t.text3, 0.75);
    const bool isBare = kind == ButtonKind::ghost || kind == ButtonKind::link;
    return {isBare ? QColor() : t.sunken, isBare ? QColor() : t.line, ink, ink};
}

int padding(ButtonSize size) {
    switch (size) {
    case ButtonSize::small: return 11;
    case ButtonSize::regular: return 13;
    case ButtonSize::large: return 17;
    }
    return 13;
}

}  // namespace

Button::Button(const QString& text, ButtonKind kind, QWidget* parent) : QPushButton(text, parent), kind_(kind) {
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(quorvane::font(TypeRole::bodyStrong));
}

Button* Button::withIcon(const QString& iconName, const QString& name, ButtonKind kind, ButtonSize size,
                         QWidget* parent) {
    auto* button = new Button(QString(), kind, parent);
    button->setIconName(iconName);
    button->setButtonSize(size);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

void Button::setIconName(const QString& name) {
    if (iconName_ == name) return;
    iconName_ = name;
    updateGeometry();
    update();
}

void Button::setButtonSize(ButtonSize size) {
    size_ = size;
    setFont(quorvane::font(size == ButtonSize::small ? TypeRole::label : TypeRole::bodyStrong));
    updateGeometry();
    update();
}

void Button::setKind(ButtonKind kind) {
    kind_ = kind;
    update();
}

bool Button::isIconOnly() const {
    return text().isEmpty() && !iconName_.isEmpty();
}

QSize Button::sizeHint() const {
    const int height = std::max(static_cast<int>(size_), fontMetrics().height() + 8);
    if (isIconOnly()) return {height, height};
    int width = fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text()).width() + 2 * padding(size_);
    if (!iconName_.isEmpty()) width += glyphSize + iconGap;
    if (menu() != nullptr) width += glyphSize + iconGap / 2;
    return {width, height};
}

QSize Button::minimumSizeHint() const {
    return sizeHint();
}

void Button::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Press press = isDown() ? Press::down : underMouse() ? Press::hovered : Press::none;
    Colors colors = isEnabled() ? colorsOf(kind_, press) : disabledColors(kind_);
    if (isEnabled() && isChecked()) colors = {theme().accSoft, theme().accent, theme().accInk, theme().accInk};
    const int radius = size_ == ButtonSize::small ? Metrics::smallRadius : Metrics::controlRadius;
    paintPanel(painter, rect(), radius, colors.fill, colors.edge);

    if (isIconOnly()) {
        drawIcon(painter, rect(), iconName_, colors.iconInk, glyphSize, layoutDirection());
        return;
    }
    const int flags = Qt::TextShowMnemonic | Qt::TextSingleLine;
    const int extra =
        (iconName_.isEmpty() ? 0 : glyphSize + iconGap) + (menu() == nullptr ? 0 : glyphSize + iconGap / 2);
    const int room = std::max(0, width() - 2 * padding(size_) - extra + 2);
    QString shown = text();
    if (fontMetrics().size(flags, shown).width() > room) {
        shown = fontMetrics().elidedText(shown, Qt::ElideRight, room, Qt::TextShowMnemonic);
    }
    const int textWidth = fontMetrics().size(flags, shown).width();
    int x = (width() - textWidth - extra) / 2;
    const auto part = [&](int partWidth) {
        const QRect leftToRight(x, 0, partWidth, height());
        return QStyle::visualRect(layoutDirection(), rect(), leftToRight);
    };
    if (!iconName_.isEmpty()) {
        drawIcon(painter, part(glyphSize), iconName_, colors.iconInk, glyphSize, layoutDirection());
        x += glyphSize + iconGap;
    }
    painter.setPen(colors.ink);
    painter.drawText(part(textWidth), flags | Qt::AlignCenter, shown);
    x += textWidth + iconGap / 2;
    if (menu() != nullptr) drawIcon(painter, part(glyphSize), QStringLiteral("down"), colors.iconInk, glyphSize);
}

void Button::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat()) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

}  // namespace quorvane
