#include "platform/linux/x11/ScreenSaverIdleSource.h"

#include <xcb/screensaver.h>

namespace quorvane::platform {

ScreenSaverIdleSource::ScreenSaverIdleSource(X11Connection& x11)
    : x11_(x11), isOffered_(x11.extension(&xcb_screensaver_id) != nullptr) {}

Seconds ScreenSaverIdleSource::secondsSinceLastInput() {
    if (!isOffered_ || !x11_.isUsable()) return -1s;
    const auto cookie = xcb_screensaver_query_info(x11_.xcb(), x11_.root());
    const auto answer = x11_.reply(xcb_screensaver_query_info_reply, cookie);
    return answer ? Seconds{std::chrono::milliseconds{answer->ms_since_user_input}} : -1s;
}

Channel ScreenSaverIdleSource::channel() const {
    return x11_.extensionChannel("system idle time", "MIT-SCREEN-SAVER", isOffered_);
}

}  // namespace quorvane::platform
