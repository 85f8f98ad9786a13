#pragma once

#include "shell/look/Icons.h"
#include "shell/look/Kind.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTabBar>

namespace quorvane {

// Standard controls in the forms in which screens use them. Kinds are those of `Kind.h`.

[[nodiscard]] QPushButton* pushButton(const QString& text, const char* kind = "", QWidget* parent = nullptr);

/// Square, with `name` as its accessible name and tooltip.
[[nodiscard]] QPushButton* iconButton(const QString& iconName, const QString& name, const char* kind = "ghost",
                                      QWidget* parent = nullptr);

/// On or off, effective at once.
[[nodiscard]] QCheckBox* switchBox(const QString& text, QWidget* parent = nullptr);

/// A name for a button: an ampersand in it is a letter and makes no shortcut.
[[nodiscard]] QString withoutShortcut(const QString& name);

/// A choice by its name, round, with a check where it is chosen; put several into a `QButtonGroup` for a single one.
[[nodiscard]] QPushButton* choiceChip(const QString& name, bool isSmall = false, QWidget* parent = nullptr);

/// One of a few, side by side.
[[nodiscard]] QTabBar* segments(const QStringList& texts, const QString& name, QWidget* parent = nullptr);

}  // namespace quorvane
