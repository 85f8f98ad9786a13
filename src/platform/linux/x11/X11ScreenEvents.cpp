#include "platform/linux/x11/X11ScreenEvents.h"

#include <utility>
#include <xcb/screensaver.h>

namespace quorvane::platform {

X11ScreenEvents::X11ScreenEvents(X11Connection& x11, std::function<void(bool)> changed)
    : x11_(x11), changed_(std::move(changed)) {
    const auto* extension = x11.extension(&xcb_screensaver_id);
    if (!extension) return;
    isOffered_ = true;
    xcb_screensaver_select_input(x11.xcb(), x11.root(), XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
    xcb_flush(x11.xcb());
    const int notify = extension->first_event + XCB_SCREENSAVER_NOTIFY;
    events_ = x11.observeEvents([this, notify](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != notify) return;
        const auto state = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event).state;
        if (state != XCB_SCREENSAVER_STATE_ON && state != XCB_SCREENSAVER_STATE_OFF)
            return;  // only the picture changed
        const bool areAsleep = state == XCB_SCREENSAVER_STATE_ON;
        if (std::exchange(areAsleep_, areAsleep) != areAsleep) changed_(areAsleep);
    });
}

Channel X11ScreenEvents::channel() const {
    return x11_.extensionChannel("screens asleep", "MIT-SCREEN-SAVER", isOffered_);
}

}  // namespace quorvane::platform
