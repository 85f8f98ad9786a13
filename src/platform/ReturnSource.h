#pragma once

#include "platform/Channel.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// Waits for somebody who is away. Destroying it ends the wait.
class ReturnWatch {
public:
    virtual ~ReturnWatch() = default;
};

/// When somebody touches something again.
class ReturnSource {
public:
    virtual ~ReturnSource() = default;

    /// Calls `returned` once, at the next input of any kind to any process; at once if there was some within the last
    /// second. Costs nothing until then. Null when nobody can tell.
    [[nodiscard]] virtual std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

}  // namespace quorvane::platform
