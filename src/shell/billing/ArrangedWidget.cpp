#include "shell/billing/ArrangedWidget.h"

#include <QEvent>
#include <QStyle>

namespace quorvane {

ArrangedWidget::ArrangedWidget(QWidget* parent) : QWidget(parent) {
    // Not fixed: a layout would hold it to the height that its former width had.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize ArrangedWidget::sizeHint() const {
    return {width(), heightForWidth(width())};
}

void ArrangedWidget::put(QWidget& part, int width, const QRect& place) const {
    part.setGeometry(QStyle::visualRect(layoutDirection(), QRect(0, 0, width, place.bottom() + 1), place));
}

void ArrangedWidget::rearrange() {
    updateGeometry();
    arrange(width(), false);
}

void ArrangedWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange(width(), false);
}

bool ArrangedWidget::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange) rearrange();
    return isHandled;
}

}  // namespace quorvane
