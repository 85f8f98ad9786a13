#pragma once

#include <string>

namespace quorvane::platform {

/// Who answers a question to the desktop, or why nobody does.
struct Channel {
    std::string question;  ///< "front window", "system idle time"
    std::string name;      ///< the channel that answers or was tried: "X11 _NET_ACTIVE_WINDOW"
    bool isAvailable = false;
    std::string reason;  ///< why it does not answer; empty when it does
    std::string remedy;  ///< what the user can do about it; may be empty
    friend bool operator==(const Channel&, const Channel&) = default;
};

}  // namespace quorvane::platform
