#pragma once

#include "shell/look/Label.h"

namespace quorvane {

/// A small label on a round ground, 24 high: a category, a tag, a status. It can't be pressed.
class Chip : public Label {
public:
    enum class Tone { neutral, info, ok, warn, bad };

    explicit Chip(const QString& text, Tone tone = Tone::neutral, QWidget* parent = nullptr);
    void setTone(Tone tone);
};

}  // namespace quorvane
