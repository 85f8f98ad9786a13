#include "capture/CaptureHealth.h"

#include <algorithm>

namespace quorvane {

using platform::Channel;
using platform::Obstacle;
using platform::Sight;

bool CaptureHealth::isLasting() const {
    switch (obstacle) {
    case Obstacle::wayland:
    case Obstacle::noDisplay:
    case Obstacle::displayRefused:
    case Obstacle::displayGone: return true;
    case Obstacle::none:
    case Obstacle::noWindowManager:
    case Obstacle::other: return false;
    }
    return false;
}

std::string CaptureHealth::sentence() const {
    if (reason.empty() || remedy.empty()) return reason;
    return reason + ". " + remedy;
}

CaptureHealth captureHealth(std::span<const Channel> channels) {
    CaptureHealth health;
    for (const Sight sight : {Sight::applications, Sight::titles, Sight::documents, Sight::pages}) {
        const auto gives = [&](const Channel& channel) { return channel.gives == sight; };
        const auto first = std::find_if(channels.begin(), channels.end(), gives);
        if (first == channels.end()) return health;
        const bool isSeen = std::any_of(channels.begin(), channels.end(),
                                        [&](const Channel& channel) { return gives(channel) && channel.isAvailable; });
        if (!isSeen) {
            health.obstacle = first->obstacle == Obstacle::none ? Obstacle::other : first->obstacle;
            health.reason = first->reason;
            health.remedy = first->remedy;
            return health;
        }
        health.sight = sight;
    }
    return health;
}

}  // namespace quorvane
