#include "shell/settings/SettingsCombo.h"

#include <QWheelEvent>

namespace quorvane {

SettingsCombo::SettingsCombo(int width, QWidget* parent) : QComboBox(parent) {
    setFixedWidth(width);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(12);
}

void SettingsCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace quorvane
