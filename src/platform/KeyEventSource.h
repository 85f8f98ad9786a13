#pragma once

#include "platform/Channel.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// A listening post for keyboard events of all applications. Destroying it takes it away.
class KeyEventTap {
public:
    virtual ~KeyEventTap() = default;

    /// Connects it with the main run loop, so that events are delivered once it is enabled. False if that can't be
    /// done.
    [[nodiscard]] virtual bool attach() = 0;

    virtual void enable(bool enabled) = 0;
};

/// Which key events a tap hears.
enum class KeyEvents { keyDown, keyDownAndUp };

/// Key events of all applications: that a key moved, never which.
class KeyEventSource {
public:
    virtual ~KeyEventSource() = default;

    /// A tap that calls `heard` for each event, repeats of a held key included; none if the desktop refuses.
    [[nodiscard]] virtual std::unique_ptr<KeyEventTap> createTap(KeyEvents events, std::function<void()> heard) = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

}  // namespace quorvane::platform
