#pragma once

#include "shell/look/FocusRing.h"

#include <QAbstractButton>

namespace quorvane {

/// On or off, with its text beside it. Checkable; for assistive technology a check box.
class Switch : public QAbstractButton, public FocusOutline {
public:
    explicit Switch(const QString& text, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] QRect focusOutline() const override;  ///< the switch without its text
    [[nodiscard]] double focusRadius() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void moveThumb(bool isOn);

    double thumb_ = 0;  ///< 0: off, 1: on; between them while it moves
};

}  // namespace quorvane
