#include "shell/look/EmptyState.h"
#include "shell/look/Label.h"
#include "shell/look/Motion.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <cmath>

namespace quorvane {
namespace {

constexpr int frame = 16;   // milliseconds
constexpr double turn = 6;  // degrees in a frame: once round in a second
constexpr double lineWidth = 3;

}  // namespace

Spinner::Spinner(int size, QWidget* parent) : QWidget(parent), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Spinner::sizeHint() const {
    return {size_, size_};
}

void Spinner::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    isDue_ = false;
    if (timer_ == 0) timer_ = startTimer(Motion::spinnerDelay);
}

void Spinner::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (timer_ != 0) killTimer(timer_);
    timer_ = 0;
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_) return;
    if (isDue_) {
        angle_ = std::fmod(angle_ + turn, 360);
    } else {
        isDue_ = true;
        killTimer(timer_);
        timer_ = Motion::isAllowed() ? startTimer(frame) : 0;
    }
    update();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
    if (!isDue_) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle =
        QRectF((width() - size_) / 2.0, (height() - size_) / 2.0, size_, size_).adjusted(3, 3, -3, -3);
    painter.setPen(QPen(theme().line2, lineWidth));
    painter.drawEllipse(circle);
    painter.setPen(QPen(theme().accent, lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, static_cast<int>(std::lround((90 - angle_) * 16)), -90 * 16);
}

LoadingState::LoadingState(const QString& text, QWidget* parent) : QWidget(parent) {
    auto* words = new Label(text, TypeRole::head, &Theme::text);
    words->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    column->addStretch(1);
    column->addWidget(new Spinner(36), 0, Qt::AlignHCenter);
    column->addSpacing(10);
    column->addWidget(words);
    column->addStretch(1);
}

}  // namespace quorvane
