#include "platform/linux/x11/X11IdleSource.h"

namespace quorvane::platform {

Seconds X11IdleSource::secondsSinceLastInput() {
    const auto seconds = sync_.secondsSinceLastInput();
    return seconds >= 0s ? seconds : screenSaver_.secondsSinceLastInput();
}

Channel X11IdleSource::channel() const {
    auto first = sync_.channel();
    if (first.isAvailable) return first;
    auto second = screenSaver_.channel();
    if (second.isAvailable || second.reason == first.reason) return second;
    first.name += ", " + second.name;
    first.reason += "; " + second.reason;
    return first;
}

}  // namespace quorvane::platform
