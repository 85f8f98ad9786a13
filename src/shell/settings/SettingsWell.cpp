#include "shell/settings/SettingsWell.h"

#include "shell/look/Painting.h"

#include <QPainter>

namespace quorvane {

void SettingsWell::setGround(QColor Theme::*ground) {
    ground_ = ground;
    update();
}

void SettingsWell::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::cardRadius, theme().*ground_,
               theme().isHighContrast ? theme().line : QColor());
}

}  // namespace quorvane
