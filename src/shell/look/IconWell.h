#pragma once

#include "shell/look/Chip.h"

#include <QFrame>

class QHBoxLayout;
class QVBoxLayout;

namespace quorvane {

class IconView;

/// A soft ground with an icon at its start and words beside it: a note, a warning, what choices mean.
class IconWell : public QFrame {
public:
    IconWell(const QString& iconName, Tone tone, QWidget* parent = nullptr);
    void setTone(const QString& iconName, Tone tone);
    /// What it says, line by line.
    [[nodiscard]] QVBoxLayout& words() { return *words_; }
    /// After the words.
    void addAction(QWidget* button);

private:
    IconView* icon_;
    QHBoxLayout* line_;
    QVBoxLayout* words_;
};

}  // namespace quorvane
