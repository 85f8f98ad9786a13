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

void AppTile::setApp(const QIcon& icon, Color color, const QString& appName) {
    icon_ = icon;
    color_ = color;
    appName_ = appName;
    setAccessibleName(appName);
    update();
}

void AppTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!icon_.isNull()) return icon_.paint(&painter, rect());
    painter.setRenderHint(QPainter::Antialiasing);
    paintAppTile(painter, QRectF(rect()), toQColor(color_), appName_);
}

}  // namespace quorvane
