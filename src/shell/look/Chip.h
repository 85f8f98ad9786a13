#pragma once

#include "shell/look/FocusRing.h"

#include <QAbstractButton>
#include <QString>

namespace quorvane {

enum class ChipTone { neutral, info, ok, warn, bad };

/// A small label, 24 high: a category, a tag, a status. It can't be pressed.
class Chip : public QWidget {
public:
    explicit Chip(const QString& text, ChipTone tone = ChipTone::neutral, QWidget* parent = nullptr);
    void setText(const QString& text);
    void setTone(ChipTone tone);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    ChipTone tone_;
};

/// A choice, 30 high (28 when small); chosen it has an edge, a colour and a check. Checkable; put several into a
/// `QButtonGroup` for a single choice.
class ChoiceChip : public QAbstractButton, public FocusOutline {
public:
    explicit ChoiceChip(const QString& text, bool isSmall = false, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] QRect focusOutline() const override;
    [[nodiscard]] double focusRadius() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isSmall_;
};

}  // namespace quorvane
