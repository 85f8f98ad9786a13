#include "shell/chart/AppTile.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

AppTile::AppTile(QWidget* parent) : QWidget(parent) {
    setFixedSize(32, 32);
    setAccessibleRole(*this, QAccessible::Graphic);
}

void AppTile::setApp(Color color, const QString& appName) {
    color_ = color;
    appName_ = appName;
    setAccessibleName(appName);
    update();
}

void AppTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintAppTile(painter, QRectF(rect()), toQColor(color_), appName_);
}

}  // namespace quorvane
