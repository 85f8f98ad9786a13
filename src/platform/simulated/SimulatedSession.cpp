#include "platform/simulated/SimulatedSession.h"

namespace quorvane::platform {

Subscription SimulatedSystemEvents::observe(SystemEvent event, std::function<void()> happened) {
    return signal(event).subscribe(std::move(happened));
}

std::vector<Channel> SimulatedSystemEvents::channels() const {
    std::vector<Channel> channels;
    for (const char* question : {"sleep", "session lock", "screens"})
        channels.push_back({.question = question, .name = "simulated", .isAvailable = true});
    return channels;
}

int SimulatedSystemEvents::observers() const {
    std::size_t count = 0;
    for (const auto& signal : signals_)
        count += signal.listeners();
    return static_cast<int>(count);
}

}  // namespace quorvane::platform
