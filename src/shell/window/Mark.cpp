#include "shell/window/Mark.h"

#include "shell/look/Icons.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

Mark::Mark(int size, QWidget* parent) : QWidget(parent) {
    setFixedSize(size, size);
}

void Mark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawIcon(painter, rect(), "quorvane", theme().text, width());
}

}  // namespace quorvane
