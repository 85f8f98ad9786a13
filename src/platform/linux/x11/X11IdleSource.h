#pragma once

#include "platform/linux/x11/ScreenSaverIdleSource.h"
#include "platform/linux/x11/SyncIdleSource.h"

namespace quorvane::platform {

/// Idle time as the X server counts it: the first of its two sources that answers. A media player that keeps the screen
/// awake may make it too short, nothing makes it too long.
class X11IdleSource final : public IdleSource {
public:
    explicit X11IdleSource(X11Connection& x11) : sync_(x11), screenSaver_(x11) {}

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

private:
    SyncIdleSource sync_;
    ScreenSaverIdleSource screenSaver_;
};

}  // namespace quorvane::platform
