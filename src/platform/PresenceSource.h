#pragma once

#include "platform/Channel.h"

#include <optional>
#include <string>

namespace quorvane::platform {

/// Whether somebody is there who touches nothing: in a call, before a film. From any thread; blocks, but for less than
/// a second.
class PresenceSource {
public:
    virtual ~PresenceSource() = default;

    /// What speaks for it at this moment, in a few words for the log; none if nothing does, or nobody can tell.
    [[nodiscard]] virtual std::optional<std::string> quietPresence() = 0;

    [[nodiscard]] virtual Channel channel() = 0;
};

}  // namespace quorvane::platform
