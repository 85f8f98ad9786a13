#pragma once

#include "platform/UserDefaults.h"

class QWidget;

/// Where a window stood and how large it was, across restarts.
namespace quorvane::WindowFrame {

/// What is kept is used if enough of it is on a screen that is there.
void restore(QWidget& window, const platform::UserDefaults& defaults);
void keep(const QWidget& window, platform::UserDefaults& defaults);

}  // namespace quorvane::WindowFrame
