#pragma once

#include "platform/Channel.h"

#include <functional>
#include <memory>

namespace quorvane::platform {

/// A position on the screen, in its own pixels.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// Listens to button presses and scrolling until it is destroyed.
class PointerEventMonitor {
public:
    virtual ~PointerEventMonitor() = default;
};

/// Button presses and scrolling, with the position where they happened. A pointer that only moves is not reported.
class PointerEventSource {
public:
    using Heard = std::function<void(Point)>;

    virtual ~PointerEventSource() = default;

    /// Events of all applications; none if the desktop refuses.
    [[nodiscard]] virtual std::unique_ptr<PointerEventMonitor> addGlobalMonitor(Heard heard) = 0;

    /// Events of this application's own windows; none if it has no windows.
    [[nodiscard]] virtual std::unique_ptr<PointerEventMonitor> addLocalMonitor(Heard heard) = 0;

    /// Where the pointer is now; (0, 0) when nobody can tell.
    [[nodiscard]] virtual Point pointerPosition() = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

}  // namespace quorvane::platform
