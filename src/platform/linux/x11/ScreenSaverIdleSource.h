#pragma once

#include "platform/IdleSource.h"
#include "platform/linux/x11/X11Connection.h"

namespace quorvane::platform {

/// Idle time as the X server counts it for its screen saver (MIT-SCREEN-SAVER).
class ScreenSaverIdleSource final : public IdleSource {
public:
    explicit ScreenSaverIdleSource(X11Connection& x11);

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

private:
    X11Connection& x11_;
    bool isOffered_ = false;
};

}  // namespace quorvane::platform
