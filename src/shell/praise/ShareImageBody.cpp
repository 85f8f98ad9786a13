#include "shell/praise/ShareImageBody.h"

#include <QBoxLayout>
#include <QResizeEvent>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int besideFrom = 760;
constexpr int wholeFrom = 1000;
constexpr int previewWidth = 456;
constexpr int leastPreviewWidth = 240;
constexpr int aboveHeight = 380;

}  // namespace

ShareImageBody::ShareImageBody(QWidget& preview, QWidget& choices, QWidget* parent)
    : QWidget(parent), preview_(preview), choices_(choices), layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
    layout_->addWidget(&preview);
    layout_->addWidget(&choices, 1);
}

void ShareImageBody::resizeEvent(QResizeEvent* event) {
    const int width = event->size().width();
    const bool isBeside = width >= besideFrom;
    layout_->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    if (isBeside) {
        const int forChoices = std::max(wholeFrom - previewWidth, choices_.minimumSizeHint().width());
        preview_.setFixedWidth(std::clamp(width - forChoices, leastPreviewWidth, previewWidth));
        preview_.setMinimumHeight(0);
        preview_.setMaximumHeight(QWIDGETSIZE_MAX);
    } else {
        preview_.setMinimumWidth(0);
        preview_.setMaximumWidth(QWIDGETSIZE_MAX);
        preview_.setFixedHeight(aboveHeight);
    }
    QWidget::resizeEvent(event);
}

}  // namespace quorvane
