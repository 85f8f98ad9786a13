#pragma once

#include "platform/IdleSource.h"
#include "platform/linux/X11Connection.h"

namespace quorvane::platform {

/// Idle time as the X server counts it: the IDLETIME counter of the SYNC extension, else the screen saver extension.
/// A media player that keeps the screen awake may make it too short, nothing makes it too long.
class X11IdleSource final : public IdleSource {
public:
    explicit X11IdleSource(X11Connection& x11);

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

private:
    X11Connection& x11_;
    std::uint32_t idleCounter_ = 0;  ///< 0: the server has none
    bool hasScreenSaver_ = false;
};

}  // namespace quorvane::platform
