#include "shell/settings/SettingsWell.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {

void SettingsWell::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::cardRadius, theme().accSoft, theme().isHighContrast ? theme().line : QColor());
}

}  // namespace quorvane
