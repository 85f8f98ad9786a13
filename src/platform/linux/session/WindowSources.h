#pragma once

#include "platform/ForegroundSource.h"
#include "platform/IdleSource.h"
#include "platform/ReturnSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/windows/WindowApplications.h"
#include "platform/linux/x11/X11Connection.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// Who answers in this session for the window in front, for idle time and for returns. Main thread only; what it is
/// made from outlives it.
struct WindowSources {
    /// Those that fit the session: on a Wayland connection of their own, or on this one to the X server.
    [[nodiscard]] static WindowSources make(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity,
                                            SessionEvents& session);

    std::shared_ptr<void> parts;  ///< what the others belong to
    ForegroundSource& foreground;
    std::function<Channel()> titleChannel;
    IdleSource& idle;
    ReturnSource& returns;
    WindowApplications& applications;
};

/// Who answers for the window in front, asked for a moment.
[[nodiscard]] Channel frontWindowChannel();

}  // namespace quorvane::platform
