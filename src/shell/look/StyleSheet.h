#pragma once

#include <QString>

namespace quorvane {

struct Theme;

/// Qt's style sheet of the standard controls: fields, combos, spin boxes, check boxes, menus, scroll bars, tool tips.
/// Everything with a state that it can't say is a painted class of this folder.
[[nodiscard]] QString styleSheet(const Theme& theme);

}  // namespace quorvane
