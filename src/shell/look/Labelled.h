#pragma once

#include "shell/look/Boxes.h"

#include <QString>

class QComboBox;
class QLineEdit;

namespace quorvane {

/// A field with its label above, which is its accessible name too.
[[nodiscard]] QVBoxLayout* labelled(const QString& label, QWidget& field);

/// A combo box that gives way in narrow forms.
[[nodiscard]] QComboBox* fieldCombo(const QString& name);

/// A line for a search, with a glass at its start; the hint in it is its accessible name.
[[nodiscard]] QLineEdit* searchField(const QString& hint);

}  // namespace quorvane
