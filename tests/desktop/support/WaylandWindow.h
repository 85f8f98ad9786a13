#pragma once

#include "platform/linux/wayland/WaylandConnection.h"

#include <string>

struct wl_compositor;
struct wl_shm;
struct wl_surface;
struct xdg_surface;
struct xdg_toplevel;
struct xdg_wm_base;

namespace quorvane {

/// A window of the test's own process in the session at WAYLAND_DISPLAY.
class WaylandWindow {
public:
    WaylandWindow(platform::RunLoop& runLoop, const std::string& appId, const std::string& title);
    ~WaylandWindow();

    void setTitle(const std::string& title);

private:
    void show();

    platform::WaylandConnection connection_;
    wl_compositor* compositor_;
    wl_shm* memory_;
    xdg_wm_base* base_;
    wl_surface* surface_;
    xdg_surface* shellSurface_;
    xdg_toplevel* toplevel_;
    wl_buffer* buffer_ = nullptr;
};

}  // namespace quorvane
