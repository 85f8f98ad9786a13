#pragma once

#include <QString>

class QComboBox;
class QVBoxLayout;
class QWidget;

/// What the parts of a rule's form share.
namespace quorvane::RuleFormParts {

inline constexpr int groupGap = 20;
inline constexpr int labelGap = 6;
inline constexpr int fieldGap = 8;

/// A field with its label above, which is its accessible name too.
[[nodiscard]] QVBoxLayout* labelled(const QString& label, QWidget& field);

/// A combo box that gives way in narrow forms.
[[nodiscard]] QComboBox* makeCombo(const QString& name);

}  // namespace quorvane::RuleFormParts
