#pragma once

#include "shell/look/Label.h"

namespace quorvane {

/// What is said in a colour: of a chip, a well, or a word with its icon.
enum class Tone { neutral, info, ok, warn, bad };

/// Its word in a kind; empty for neutral.
[[nodiscard]] const char* wordOf(Tone tone);
/// Letters and icons in that tone: a member of `Theme`.
[[nodiscard]] QColor Theme::*inkOf(Tone tone);

/// A small label on a round ground, 24 high: a category, a tag, a status. It can't be pressed.
class Chip : public Label {
public:
    using Tone = quorvane::Tone;

    explicit Chip(const QString& text, Tone tone = Tone::neutral, QWidget* parent = nullptr);
    void setTone(Tone tone);
};

}  // namespace quorvane
