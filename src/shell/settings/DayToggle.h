#pragma once

#include "shell/look/Switch.h"

namespace quorvane {

/// A day of the week that may be chosen: filled, and with a strong name, while it is. A switch in all but its looks.
class DayToggle : public Switch {
public:
    explicit DayToggle(const QString& name, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QRect focusOutline() const override { return rect(); }
    [[nodiscard]] double focusRadius() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
