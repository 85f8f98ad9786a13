#include "shell/praise/PraiseReason.h"

#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

namespace quorvane {
namespace {

constexpr int stripeWidth = 3;
constexpr int gap = 8;

}  // namespace

PraiseReason::PraiseReason(QWidget* parent)
    : QWidget(parent), label_(new Label(QString(), TypeRole::labelPlain, &Theme::text2)) {
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addSpacing(stripeWidth + gap);
    line->addWidget(label_, 1);
    label_->setWordWrap(true);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void PraiseReason::show(const QString& text, const QColor& stripe) {
    label_->setText(text);
    stripe_ = stripe;
    setVisible(!text.isEmpty());
    update();
}

void PraiseReason::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(stripe_);
    const int x = isRightToLeft() ? width() - stripeWidth : 0;
    painter.drawRoundedRect(QRectF(x, 0, stripeWidth, height()), 1.5, 1.5);
}

}  // namespace quorvane
