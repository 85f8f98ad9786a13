#include "shell/look/Card.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

Card::Card(QWidget* parent) : QFrame(parent) {
    setFrameShape(QFrame::NoFrame);
    setAccessibleRole(*this, QAccessible::Grouping);
}

void Card::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::cardRadius, theme().surface, theme().line);
}

Separator::Separator(QWidget* parent) : QFrame(parent) {
    setAccessibleRole(*this, QAccessible::Separator);
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Separator::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), theme().line2);
}

}  // namespace quorvane
