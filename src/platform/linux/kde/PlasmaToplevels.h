#pragma once

#include "platform/linux/wayland/WaylandToplevels.h"

namespace quorvane::platform {

/// The windows as KWin tells of them (org_kde_plasma_window_management), which it does only to programs whose desktop
/// file asks for it; see PlasmaGrant. While the screen is locked the window in front stays active.
class PlasmaToplevels final : public WaylandToplevels {
public:
    explicit PlasmaToplevels(WaylandConnection& connection);

    [[nodiscard]] Channel channel() const override;

    /// Does this connection get answers? A new grant counts from the next connection on.
    [[nodiscard]] static bool isOffered(const WaylandConnection& connection);

    /// Is the compositor KWin, whatever it grants?
    [[nodiscard]] static bool isKWin(const WaylandConnection& connection);

private:
    class Handle;
    class Handles;

    WaylandConnection& connection_;
};

}  // namespace quorvane::platform
