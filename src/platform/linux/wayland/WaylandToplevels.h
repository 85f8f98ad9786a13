#pragma once

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/windows/SettledToplevels.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>

namespace quorvane::platform {

/// The windows as a compositor tells of them by a protocol of its own. On the way from one window to the next there may
/// be two active ones or none, in either order, so that only what holds after a batch of events counts.
class WaylandToplevels : public SettledToplevels {
protected:
    /// One window, as far as it has been told of. Its end is that of its object on the connection.
    class Window {
    public:
        Window() = default;
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        virtual ~Window() = default;

        ToplevelWindow told;
        bool isWhole = false;  ///< has all been told that belongs to a new one? Until then it isn't there
        bool isActive = false;
        std::uint64_t activation = 0;  ///< the later, the greater
    };

    /// Those of one connection.
    class Windows {
    public:
        Windows() = default;
        Windows(const Windows&) = delete;
        Windows& operator=(const Windows&) = delete;
        virtual ~Windows() = default;

        void add(std::unique_ptr<Window> window) { windows_.push_back(std::move(window)); }
        void setActive(Window& window, bool isActive);
        void close(const Window& closed);

        /// The one that was activated last of those that still are.
        [[nodiscard]] std::optional<ToplevelWindow> active() const;
        [[nodiscard]] std::vector<ToplevelWindow> all() const;

    private:
        std::list<std::unique_ptr<Window>> windows_;
        std::uint64_t activations_ = 0;
    };

    /// `bind` makes them on each new connection; null where the compositor doesn't offer the protocol.
    /// What it told is there once whoever implements this has let the connection settle.
    /// `patience` is that of SettledToplevels.
    WaylandToplevels(WaylandConnection& connection, Seconds patience, std::function<std::unique_ptr<Windows>()> bind);

private:
    std::unique_ptr<Windows> windows_;
    Subscription connected_;
    Subscription lost_;
    Subscription settled_;
};

}  // namespace quorvane::platform
