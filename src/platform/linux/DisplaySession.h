#pragma once

#include "platform/linux/X11Connection.h"

#include <memory>

namespace quorvane::platform {

/// Does a Wayland compositor listen where WAYLAND_DISPLAY (default "wayland-0") says?
[[nodiscard]] bool isWaylandSession();

/// The connection to ask about windows and input. A Wayland session has an X server too, which sees only some of the
/// windows and little of the input, so there the connection refuses everything and says why.
[[nodiscard]] std::unique_ptr<X11Connection>
connectToDisplay(X11Connection::Reader reader = X11Connection::Reader::runLoop);

}  // namespace quorvane::platform
