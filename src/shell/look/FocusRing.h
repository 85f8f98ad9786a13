#pragma once

namespace quorvane {

/// Keeps a ring round the control that has the focus, as soon as it came by a key: buttons, fields, combos, spin boxes
/// and tabs. Lists and canvases draw theirs with `paintFocusRing`. Does nothing when called again; `applyTheme` calls
/// it.
void followFocus();

}  // namespace quorvane
