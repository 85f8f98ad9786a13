#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <functional>

namespace quorvane::platform {

/// Whether the screens are dark: the screen saver extension, which reports DPMS too.
class X11ScreenEvents {
public:
    X11ScreenEvents(X11Connection& x11, std::function<void(bool areAsleep)> changed);

    [[nodiscard]] Channel channel() const;

private:
    X11Connection& x11_;
    std::function<void(bool)> changed_;
    bool areAsleep_ = false;
    bool isOffered_ = false;
    Subscription events_;
};

}  // namespace quorvane::platform
