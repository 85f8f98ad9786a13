#include "shell/look/Chip.h"

#include "shell/look/CheckableAccessible.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int chipHeight = 24;
constexpr int chipPadding = 10;
constexpr int choicePadding = 13;
constexpr int checkSize = 16;
constexpr int checkGap = 6;

std::pair<QColor, QColor> groundAndInk(ChipTone tone) {
    const Theme& t = theme();
    switch (tone) {
    case ChipTone::neutral: return {t.sunken, t.text2};
    case ChipTone::info: return {t.accSoft, t.accInk};
    case ChipTone::ok: return {t.okSoft, t.ok};
    case ChipTone::warn: return {t.warnSoft, t.warn};
    case ChipTone::bad: return {t.badSoft, t.bad};
    }
    return {};
}

}  // namespace

Chip::Chip(const QString& text, ChipTone tone, QWidget* parent) : QWidget(parent), tone_(tone) {
    CheckableAccessible::install();
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setFont(quorvane::font(TypeRole::label));
    setText(text);
}

void Chip::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void Chip::setTone(ChipTone tone) {
    tone_ = tone;
    update();
}

QSize Chip::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_) + 2 * chipPadding, std::max(chipHeight, fontMetrics().height() + 6)};
}

QSize Chip::minimumSizeHint() const {
    const int shortest = fontMetrics().horizontalAdvance(QStringLiteral("mm…")) + 2 * chipPadding;
    return {std::min(shortest, sizeHint().width()), sizeHint().height()};
}

void Chip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto [ground, ink] = groundAndInk(tone_);
    // With strong contrast asked for, a pale ground alone is no shape.
    paintPanel(painter, rect(), height() / 2.0, ground, theme().isHighContrast ? theme().control : QColor());
    painter.setPen(ink);
    const QString shown = fontMetrics().elidedText(text_, Qt::ElideRight, width() - 2 * chipPadding + 2);
    painter.drawText(rect(), Qt::AlignCenter, shown);
}

ChoiceChip::ChoiceChip(const QString& text, bool isSmall, QWidget* parent)
    : QAbstractButton(parent), isSmall_(isSmall) {
    CheckableAccessible::install();
    CheckableAccessible::announceToggles(*this);
    setText(text);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFont(quorvane::font(isSmall ? TypeRole::label : TypeRole::bodyStrong));
    connect(this, &QAbstractButton::toggled, this, [this] { updateGeometry(); });
}

QSize ChoiceChip::sizeHint() const {
    const int check = isChecked() ? checkSize + checkGap : 0;
    const int chipSide = isSmall_ ? 28 : 30;
    return {fontMetrics().horizontalAdvance(text()) + 2 * choicePadding + check,
            std::max(chipSide, fontMetrics().height() + 8)};
}

QRect ChoiceChip::focusOutline() const {
    return rect();
}

double ChoiceChip::focusRadius() const {
    return height() / 2.0;
}

void ChoiceChip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme& t = theme();
    QColor ground = isChecked() ? t.accSoft : t.surface;
    if (isEnabled() && !isChecked() && underMouse()) ground = isDown() ? t.press : t.hover;
    if (!isEnabled()) ground = t.sunken;
    const QColor edge = !isEnabled() ? t.line : isChecked() ? t.accent : t.control;
    const QColor ink = !isEnabled() ? withOpacity(t.text3, 0.75) : isChecked() ? t.accInk : t.text;
    paintPanel(painter, rect(), height() / 2.0, ground, edge);
    QRect place = rect().adjusted(choicePadding, 0, -choicePadding, 0);
    if (isChecked()) {
        drawIcon(painter, QStyle::visualRect(layoutDirection(), rect(), QRect(place.left(), 0, checkSize, height())),
                 QStringLiteral("check"), ink, checkSize);
        place.adjust(checkSize + checkGap, 0, 0, 0);
    }
    painter.setPen(ink);
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), place), Qt::AlignCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, place.width() + 2));
}

}  // namespace quorvane
