#include "shell/look/Switch.h"

#include "shell/look/CheckableAccessible.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QStyle>
#include <QVariantAnimation>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int trackWidth = 36;
constexpr int trackHeight = 20;
constexpr int thumbSize = 14;
constexpr int textGap = 8;
constexpr int smallestTarget = 24;

}  // namespace

Switch::Switch(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    CheckableAccessible::install();
    CheckableAccessible::announceToggles(*this);
    setText(text);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(quorvane::font(TypeRole::body));
    connect(this, &QAbstractButton::toggled, this, [this](bool isOn) { moveThumb(isOn); });
}

void Switch::moveThumb(bool isOn) {
    const int duration = isVisible() ? Motion::milliseconds(Motion::thumb) : 0;
    if (duration == 0) {
        thumb_ = isOn ? 1 : 0;
        update();
        return;
    }
    auto* animation = new QVariantAnimation(this);
    animation->setDuration(duration);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    animation->setStartValue(thumb_);
    animation->setEndValue(isOn ? 1.0 : 0.0);
    connect(animation, &QVariantAnimation::valueChanged, this, [this, isOn](const QVariant& value) {
        if (isOn != isChecked()) return;  // turned back while this one was still on its way
        thumb_ = value.toDouble();
        update();
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

QSize Switch::sizeHint() const {
    const int textWidth = text().isEmpty() ? 0 : textGap + fontMetrics().horizontalAdvance(text());
    return {trackWidth + textWidth, std::max(smallestTarget, fontMetrics().height() + 4)};
}

QRect Switch::focusOutline() const {
    const QRect track(0, (height() - trackHeight) / 2, trackWidth, trackHeight);
    return QStyle::visualRect(layoutDirection(), rect(), track);
}

double Switch::focusRadius() const {
    return trackHeight / 2.0;
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& t = theme();
    const QRectF track = focusOutline();
    QColor ground = isChecked() ? underMouse() ? t.accFillHover : t.accFill : t.control;
    if (!isEnabled()) ground = withOpacity(ground, 0.45);
    paintPanel(painter, track, trackHeight / 2.0, ground, QColor());
    const double way = layoutDirection() == Qt::RightToLeft ? 1 - thumb_ : thumb_;
    const double margin = (trackHeight - thumbSize) / 2.0;
    const double x = track.left() + margin + way * (trackWidth - thumbSize - 2 * margin);
    painter.setPen(Qt::NoPen);
    painter.setBrush(t.onFill);
    painter.drawEllipse(QRectF(x, track.top() + margin, thumbSize, thumbSize));
    if (text().isEmpty()) return;
    painter.setPen(isEnabled() ? t.text : withOpacity(t.text3, 0.75));
    const QRect place = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(trackWidth + textGap, 0, 0, 0));
    const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(place, static_cast<int>(alignment) | Qt::TextShowMnemonic, text());
}

}  // namespace quorvane
