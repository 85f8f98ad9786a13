#include "capture/CaptureHealth.h"

#include <algorithm>

namespace quorvane {

using platform::Channel;
using platform::Obstacle;
using platform::Sight;

bool CaptureHealth::isLasting() const {
    switch (obstacle) {
    case Obstacle::noDisplay:
    case Obstacle::displayRefused:
    case Obstacle::displayGone: return true;
    case Obstacle::none:
    case Obstacle::wayland:  // an extension or an accessibility bus may come
    case Obstacle::noWindowManager:
    case Obstacle::noBrowser:
    case Obstacle::noExtension:
    case Obstacle::afterLogin:
    case Obstacle::other: return false;
    }
    return false;
}

std::string CaptureHealth::sentence() const {
    if (reason.empty() || remedy.empty()) return reason;
    return reason + ". " + remedy;
}

namespace {

void takeObstacle(CaptureHealth& health, const Channel& channel) {
    health.obstacle = channel.obstacle == Obstacle::none ? Obstacle::other : channel.obstacle;
    health.reason = channel.reason;
    health.remedy = channel.remedy;
}

}  // namespace

CaptureHealth captureHealth(std::span<const Channel> channels) {
    CaptureHealth health;
    for (const Sight sight : {Sight::applications, Sight::titles, Sight::documents, Sight::pages}) {
        const auto gives = [&](const Channel& channel) { return channel.gives == sight; };
        const auto first = std::find_if(channels.begin(), channels.end(), gives);
        if (first == channels.end()) return health;
        const auto seen = std::find_if(channels.begin(), channels.end(),
                                       [&](const Channel& channel) { return gives(channel) && channel.isAvailable; });
        const bool isSeen = seen != channels.end();
        if (!isSeen && !health.isPartial) takeObstacle(health, *first);
        if (!isSeen) return health;
        if (sight == Sight::applications && !seen->reason.empty()) {
            health.isPartial = true;
            takeObstacle(health, *seen);
        }
        health.sight = sight;
    }
    return health;
}

}  // namespace quorvane
