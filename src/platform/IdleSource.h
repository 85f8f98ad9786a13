#pragma once

#include "base/Date.h"
#include "platform/Channel.h"

namespace quorvane::platform {

/// How long nobody has touched anything.
class IdleSource {
public:
    virtual ~IdleSource() = default;

    /// Seconds since the last input of any kind to any process. Negative when nobody can tell.
    [[nodiscard]] virtual Seconds secondsSinceLastInput() = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

}  // namespace quorvane::platform
