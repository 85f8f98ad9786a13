#pragma once

#include "platform/Channel.h"

#include <span>
#include <string>

namespace quorvane {

/// How much of the user's work can be seen, and why not more.
struct CaptureHealth {
    platform::Sight sight = platform::Sight::nothing;
    bool isPartial = false;  ///< of the applications only some can be seen
    platform::Obstacle obstacle = platform::Obstacle::none;  ///< before those applications, else before what comes after `sight`
    std::string reason;  ///< the obstacle in words; empty if all can be seen that was asked about
    std::string remedy;  ///< what the user can do about it; may be empty
    friend bool operator==(const CaptureHealth&, const CaptureHealth&) = default;

    /// Without this nothing is recorded, whatever is running.
    [[nodiscard]] bool canSee() const { return sight != platform::Sight::nothing; }

    /// Does nobody need to wait for the obstacle to go? This process will not see anything any more.
    [[nodiscard]] bool isLasting() const;

    /// Reason and remedy as one text: "the display is gone. Start again."; empty where all is well.
    [[nodiscard]] std::string sentence() const;
};

/// What the channels let see, taken together. Each kind of sight builds on the one before: it counts up to the first
/// that no available channel gives. Of several channels that give the same one is enough.
[[nodiscard]] CaptureHealth captureHealth(std::span<const platform::Channel> channels);

}  // namespace quorvane
