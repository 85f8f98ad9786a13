#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>

namespace quorvane {

/// Mixed into a painted widget whose parts assistive technology meets one by one. The parts are numbered from 0.
class PaintedParts {
public:
    PaintedParts();
    virtual ~PaintedParts() = default;

    [[nodiscard]] virtual int partCount() const = 0;
    [[nodiscard]] virtual QString partName(int part) const = 0;
    [[nodiscard]] virtual QRect partRectangle(int part) const = 0;  ///< in the widget
    /// Buttons can be pressed and have the focus, list items are only read.
    [[nodiscard]] virtual QAccessible::Role partRole() const = 0;
    /// The part with the focus while the widget has it; -1 for none.
    [[nodiscard]] virtual int focusedPart() const { return -1; }
    virtual void pressPart(int /*part*/) {}

protected:
    PaintedParts(const PaintedParts&) = default;
    PaintedParts& operator=(const PaintedParts&) = default;
};

}  // namespace quorvane
