#include "shell/chart/Well.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

Well::Well(QColor Theme::*fill, QWidget* parent) : QFrame(parent), fill_(fill) {
    setAccessibleRole(*this, QAccessible::Grouping);
}

void Well::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintPanel(painter, QRectF(rect()), Metrics::controlRadius, theme().*fill_, {});
}

}  // namespace quorvane
