#include "platform/linux/session/LinuxSystemEvents.h"

#include <utility>

namespace quorvane::platform {

LinuxSystemEvents::LinuxSystemEvents(SessionEvents& session, X11Connection& x11)
    : session_(session), screens_(x11, [this](bool areAsleep) { (areAsleep ? screensSlept_ : screensWoke_).send(); }) {}

Subscription LinuxSystemEvents::observe(SystemEvent event, std::function<void()> happened) {
    if (event == SystemEvent::screensDidSleep) return screensSlept_.subscribe(std::move(happened));
    if (event == SystemEvent::screensDidWake) return screensWoke_.subscribe(std::move(happened));
    return session_.observe(event, std::move(happened));
}

std::vector<Channel> LinuxSystemEvents::channels() const {
    auto channels = session_.channels();
    channels.push_back(screens_.channel());
    return channels;
}

}  // namespace quorvane::platform
