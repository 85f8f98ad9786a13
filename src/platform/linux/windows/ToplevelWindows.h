#pragma once

#include "base/Signal.h"
#include "platform/Channel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// A window that a compositor tells of.
struct ToplevelWindow {
    std::string appId;  ///< usually the desktop-file id; of an X11 window its class
    std::string title;
    std::int64_t processIdentifier = 0;  ///< 0 where the compositor doesn't tell
    friend bool operator==(const ToplevelWindow&, const ToplevelWindow&) = default;
};

/// The windows of the session, as one kind of compositor tells of them. Main thread only.
class ToplevelWindows {
public:
    virtual ~ToplevelWindows() = default;

    /// The one that has the focus; none while a lock screen, a panel or nothing has it.
    [[nodiscard]] virtual std::optional<ToplevelWindow> active() const = 0;

    /// All of them, in no order.
    [[nodiscard]] virtual std::vector<ToplevelWindow> all() const = 0;

    /// Calls `changed` after anything of that has changed.
    virtual Subscription observe(std::function<void()> changed) = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

}  // namespace quorvane::platform
