#include "shell/window/SyncSymbol.h"

#include "shell/look/Icons.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QTimerEvent>
#include <cmath>

namespace quorvane {
namespace {

constexpr int side = 40;
constexpr int symbolSize = 20;
constexpr int frame = 16;   // milliseconds
constexpr double turn = 5;  // degrees in a frame

struct Colors {
    QColor ground;
    QColor ink;
};

Colors colorsOf(SyncSymbol::State state) {
    const Theme& t = theme();
    switch (state) {
    case SyncSymbol::State::idle: return {t.surface, t.text2};
    case SyncSymbol::State::available: return {t.okSoft, t.ok};
    case SyncSymbol::State::syncing: return {t.accSoft, t.accInk};
    }
    return {};
}

}  // namespace

SyncSymbol::SyncSymbol(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SyncSymbol::sizeHint() const {
    return {side, side};
}

void SyncSymbol::setState(State state, const QString& iconName) {
    if (state == state_ && iconName == iconName_) return;
    state_ = state;
    iconName_ = iconName;
    turnOrStop();
    update();
}

void SyncSymbol::turnOrStop() {
    const bool turns = state_ == State::syncing && isVisible() && Motion::isAllowed();
    if (turns == isTurning()) return;
    if (turns) {
        timer_ = startTimer(frame);
    } else {
        killTimer(timer_);
        timer_ = 0;
        angle_ = 0;
    }
}

void SyncSymbol::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    turnOrStop();
}

void SyncSymbol::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    turnOrStop();
}

void SyncSymbol::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_) return;
    angle_ = std::fmod(angle_ + turn, 360);
    update();
}

void SyncSymbol::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const Colors colors = colorsOf(state_);
    paintPanel(painter, rect(), Metrics::cardRadius, colors.ground, {});
    const QPointF middle = QRectF(rect()).center();
    painter.translate(middle);
    painter.rotate(angle_);
    const QRectF around(-middle.x(), -middle.y(), width(), height());
    drawIcon(painter, around, iconName_, colors.ink, symbolSize, layoutDirection(), colors.ground);
}

}  // namespace quorvane
