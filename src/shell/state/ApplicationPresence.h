#pragma once

#include <cstddef>

namespace quorvane {

/// How the application stands on the desktop: its windows, and whether a taskbar names them.
class ApplicationPresence {
public:
    /// Regular: in the taskbar. Accessory: in the tray alone.
    enum class ActivationPolicy { regular, accessory };

    virtual ~ApplicationPresence() = default;

    [[nodiscard]] virtual ActivationPolicy activationPolicy() const = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    virtual void activateIgnoringOtherApps() = 0;

    /// Hidden and minimised ones count.
    [[nodiscard]] virtual std::size_t windowCount() const = 0;
    [[nodiscard]] virtual bool hasVisibleWindows() const = 0;

    /// Shows the first window that can become main in front of all others; false if there is none.
    virtual bool makeKeyAndOrderFront() = 0;
};

}  // namespace quorvane
