#include "shell/look/IconView.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <algorithm>

namespace quorvane {

IconView::IconView(const QString& name, int size, QColor Theme::*ink, QWidget* parent)
    : QWidget(parent), name_(name), size_(size), ink_(ink) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconView::setIcon(const QString& name, QColor Theme::*ink) {
    name_ = name;
    ink_ = ink;
    update();
}

void IconView::setWell(int side, double radius, QColor Theme::*ground) {
    wellSide_ = side;
    wellRadius_ = radius;
    wellGround_ = ground;
    updateGeometry();
    update();
}

QSize IconView::sizeHint() const {
    const int side = std::max(size_, wellSide_);
    return {side, side};
}

void IconView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QColor ground = theme().surface;
    if (wellGround_ != nullptr) {
        ground = theme().*wellGround_;
        const QRectF well(QPointF((width() - wellSide_) / 2.0, (height() - wellSide_) / 2.0),
                          QSizeF(wellSide_, wellSide_));
        paintPanel(painter, well, wellRadius_, ground, QColor());
    }
    drawIcon(painter, rect(), name_, theme().*ink_, size_, layoutDirection(), ground);
}

}  // namespace quorvane
