#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <memory>

namespace quorvane::platform {

/// What makes the windows of the session.
enum class SessionKind { x11, wayland, unknown };

/// The environment decides, and where it says nothing, logind: a compositor that listens at WAYLAND_DISPLAY, else the
/// type of the session.
[[nodiscard]] SessionKind sessionKind();

/// The connection to ask about windows and input. A Wayland session has an X server too, which sees only some of the
/// windows and little of the input, so there the connection refuses everything and says why. In a session of unknown
/// kind it is the X server that counts, if it lets us in and is none that the compositor at "wayland-0" has brought.
[[nodiscard]] std::unique_ptr<X11Connection>
connectToDisplay(X11Connection::Reader reader = X11Connection::Reader::runLoop);

/// Was that connection refused because the session is one of Wayland?
[[nodiscard]] bool isOfWaylandSession(const X11Connection& x11);

}  // namespace quorvane::platform
