#pragma once

#include <QRect>

class QWidget;

namespace quorvane {

/// Says where the ring goes round a control that paints less than its rectangle. Buttons, fields, combos and spin boxes
/// don't need it.
class FocusOutline {
public:
    virtual ~FocusOutline() = default;
    [[nodiscard]] virtual QRect focusOutline() const = 0;  ///< in the widget's coordinates
    [[nodiscard]] virtual double focusRadius() const = 0;
};

/// Draws the ring round the control that has the focus, above its neighbours, so that nothing clips it: standard
/// controls, `Button` and every `FocusOutline`. Painted canvases draw theirs with `paintFocusRing`. Does nothing when
/// called again; `applyTheme` calls it.
void followFocus();

}  // namespace quorvane
