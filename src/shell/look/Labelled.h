#pragma once

#include "shell/look/Boxes.h"

#include <QString>

class QComboBox;

namespace quorvane {

/// A field with its label above, which is its accessible name too.
[[nodiscard]] QVBoxLayout* labelled(const QString& label, QWidget& field);

/// A combo box that gives way in narrow forms.
[[nodiscard]] QComboBox* fieldCombo(const QString& name);

}  // namespace quorvane
