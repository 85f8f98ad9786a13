#pragma once

#include "platform/ForegroundSource.h"
#include "platform/IdleSource.h"
#include "platform/ReturnSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/windows/WindowApplications.h"
#include "platform/linux/x11/X11Connection.h"

#include <vector>

namespace quorvane::platform {

/// Who answers in this session for the window in front, for idle time and for returns. Main thread only; what it is
/// made from outlives it.
class WindowSources {
public:
    /// Those that fit the session: on a Wayland connection of their own, or on this one to the X server.
    [[nodiscard]] static std::unique_ptr<WindowSources>
    make(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity, SessionEvents& session);
    virtual ~WindowSources() = default;

    [[nodiscard]] virtual ForegroundSource& foreground() = 0;
    [[nodiscard]] virtual IdleSource& idle() = 0;
    [[nodiscard]] virtual ReturnSource& returns() = 0;
    [[nodiscard]] virtual WindowApplications& applications() = 0;
    [[nodiscard]] virtual Channel titleChannel() const = 0;

    /// Who would answer for the window in front if somebody asked now, without a run loop.
    [[nodiscard]] static Channel frontWindowChannel();
};

}  // namespace quorvane::platform
