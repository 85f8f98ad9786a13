#include "shell/look/Theme.h"

#include "shell/look/FocusRing.h"
#include "shell/look/HouseStyle.h"
#include "shell/look/Typography.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

QColor rgb(QRgb value) {
    return QColor::fromRgb(value);
}

Theme& current() {
    static Theme theme = Theme::light();
    return theme;
}

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QPalette paletteOf(const Theme& theme) {
    QPalette palette;
    palette.setColor(QPalette::Window, theme.canvas);
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Base, theme.surface);
    palette.setColor(QPalette::AlternateBase, theme.sunken);
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::PlaceholderText, theme.text3);
    palette.setColor(QPalette::Button, theme.surface);
    palette.setColor(QPalette::ButtonText, theme.text);
    palette.setColor(QPalette::Mid, theme.line);
    palette.setColor(QPalette::Highlight, theme.accFill);
    palette.setColor(QPalette::HighlightedText, theme.onFill);
    palette.setColor(QPalette::Link, theme.accent);
    palette.setColor(QPalette::ToolTipBase, theme.tip);
    palette.setColor(QPalette::ToolTipText, theme.tipText);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, withOpacity(theme.text3, 0.75));
    return palette;
}

}  // namespace

Theme Theme::light() {
    return {.canvas = rgb(0xF5F6F8),
            .side = rgb(0xECEEF2),
            .surface = rgb(0xFFFFFF),
            .sunken = rgb(0xF1F3F6),
            .hover = rgb(0xEEF1F5),
            .press = rgb(0xE3E7EC),
            .line = rgb(0xDEE2E8),
            .line2 = rgb(0xE9ECF0),
            .control = rgb(0x7C8695),
            .text = rgb(0x171C24),
            .text2 = rgb(0x4A5463),
            .text3 = rgb(0x5D6776),
            .accent = rgb(0x2459D8),
            .accFill = rgb(0x2459D8),
            .accFillHover = rgb(0x1D4BBD),
            .accSoft = rgb(0xE4ECFD),
            .accInk = rgb(0x1B469F),
            .onFill = rgb(0xFFFFFF),
            .ok = rgb(0x1A7347),
            .okSoft = rgb(0xDFF3E7),
            .warn = rgb(0x8A5200),
            .warnSoft = rgb(0xFCEFD8),
            .orange = rgb(0xD06A00),
            .bad = rgb(0xBE2A2A),
            .badSoft = rgb(0xFCE7E7),
            .badFill = rgb(0xBE2A2A),
            .grey = QColor(128, 134, 144),
            .blue = rgb(0x2459D8),
            .scrim = withOpacity(QColor(20, 26, 36), 0.42),
            .tip = rgb(0x1F242C),
            .tipText = rgb(0xF2F4F7),
            .segment = rgb(0xFFFFFF)};
}

Theme Theme::dark() {
    return {.isDark = true,
            .canvas = rgb(0x111419),
            .side = rgb(0x161A20),
            .surface = rgb(0x1A1E25),
            .sunken = rgb(0x21262E),
            .hover = rgb(0x252B34),
            .press = rgb(0x2D343F),
            .line = rgb(0x2E353F),
            .line2 = rgb(0x262C35),
            .control = rgb(0x737E8E),
            .text = rgb(0xE9ECF1),
            .text2 = rgb(0xB4BDC9),
            .text3 = rgb(0x929CAB),
            .accent = rgb(0x7FA5FF),
            .accFill = rgb(0x3566DD),
            .accFillHover = rgb(0x3E6EE2),
            .accSoft = rgb(0x1D2B4B),
            .accInk = rgb(0xAFC7FF),
            .onFill = rgb(0xFFFFFF),
            .ok = rgb(0x5FCB8E),
            .okSoft = rgb(0x15301F),
            .warn = rgb(0xEDB457),
            .warnSoft = rgb(0x372911),
            .orange = rgb(0xF0953C),
            .bad = rgb(0xFF8F8F),
            .badSoft = rgb(0x3C1D20),
            .badFill = rgb(0xC93A3A),
            .grey = QColor(150, 158, 170),
            .blue = rgb(0x2459D8),
            .scrim = withOpacity(QColor(4, 6, 9), 0.62),
            .tip = rgb(0x2B323C),
            .tipText = rgb(0xF2F4F7),
            .segment = rgb(0x343C48)};
}

Theme Theme::withHighContrast() const {
    Theme strong = *this;
    strong.isHighContrast = true;
    strong.line = strong.line2 = control;
    strong.text2 = strong.text3 = text;
    return strong;
}

const Theme& theme() {
    return current();
}

QColor toQColor(Color color) {
    return {color.red, color.green, color.blue};
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor onGround(const QColor& color, double opacity, const QColor& ground) {
    const auto part = [share = static_cast<float>(opacity)](float of, float under) {
        return under + (of - under) * share;
    };
    return QColor::fromRgbF(part(color.redF(), ground.redF()), part(color.greenF(), ground.greenF()),
                            part(color.blueF(), ground.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor inkOn(const QColor& ground) {
    return contrast(Qt::white, ground) >= 4.5 ? Qt::white : Qt::black;
}

void applyTheme(const Theme& theme) {
    current() = theme;
    static bool isPrepared = false;
    if (!isPrepared) {
        isPrepared = true;
        const QFont body = font(TypeRole::body);  // first reads the desktop's own
        QApplication::setStyle(new HouseStyle);
        QApplication::setFont(body);
        QToolTip::setFont(font(TypeRole::labelPlain));
        followFocus();
    }
    QApplication::setPalette(paletteOf(theme));
    QToolTip::setPalette(paletteOf(theme));
    // Also those whose own colours hide the palette's.
    for (QWidget* widget : QApplication::allWidgets()) {
        QEvent event(QEvent::PaletteChange);
        QApplication::sendEvent(widget, &event);
    }
}

}  // namespace quorvane
