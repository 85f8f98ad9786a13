#pragma once

#include "shell/state/ApplicationPresence.h"

/// Does the application show in the Dock, that is the taskbar?
namespace quorvane::DockVisibilityController {

/// Changes only what differs. `activate` brings the application to the front, unless it hides.
void apply(ApplicationPresence& application, bool hideFromDock, bool activate);

}  // namespace quorvane::DockVisibilityController
