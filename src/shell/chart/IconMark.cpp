#include "shell/chart/IconMark.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Icons.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

IconMark::IconMark(const QString& iconName, int size, QColor Theme::*ink, QWidget* parent)
    : QWidget(parent), iconName_(iconName), size_(size), ink_(ink) {
    setFixedSize(size, size);
    setAccessibleRole(*this, QAccessible::Graphic);
}

void IconMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawIcon(painter, QRectF(rect()), iconName_, theme().*ink_, size_, layoutDirection(), theme().surface);
}

}  // namespace quorvane
