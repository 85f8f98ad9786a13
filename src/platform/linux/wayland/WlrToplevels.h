#pragma once

#include "platform/linux/wayland/WaylandToplevels.h"

namespace quorvane::platform {

/// The windows as compositors on wlroots and their like tell of them (zwlr_foreign_toplevel_manager_v1). The lock
/// screen takes the focus from all of them.
class WlrToplevels final : public WaylandToplevels {
public:
    explicit WlrToplevels(WaylandConnection& connection);

    [[nodiscard]] Channel channel() const override;

    [[nodiscard]] static bool isOffered(const WaylandConnection& connection);

private:
    class Handle;
    class Handles;

    WaylandConnection& connection_;
};

}  // namespace quorvane::platform
