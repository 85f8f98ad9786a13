#include "desktop/support/WaylandWindow.h"

#include <xdg-shell-client.h>

#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr int width = 64;
constexpr int height = 64;

/// An empty picture.
wl_buffer* makeBuffer(wl_shm* memory) {
    constexpr int bytes = width * height * 4;
    const int descriptor = memfd_create("window", MFD_CLOEXEC);
    if (descriptor < 0 || ftruncate(descriptor, bytes) != 0) throw std::runtime_error("no memory for a window");
    auto* pool = wl_shm_create_pool(memory, descriptor, bytes);
    auto* buffer = wl_shm_pool_create_buffer(pool, 0, width, height, width * 4, WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
    close(descriptor);
    return buffer;
}

}  // namespace

WaylandWindow::WaylandWindow(platform::RunLoop& runLoop, const std::string& appId, const std::string& title)
    : connection_(&runLoop), compositor_(connection_.bind<wl_compositor>(wl_compositor_interface, 1)),
      memory_(connection_.bind<wl_shm>(wl_shm_interface, 1)),
      base_(connection_.bind<xdg_wm_base>(xdg_wm_base_interface, 1)) {
    static constexpr xdg_wm_base_listener baseListener{
        .ping = [](void*, xdg_wm_base* base, std::uint32_t serial) { xdg_wm_base_pong(base, serial); }};
    static constexpr xdg_surface_listener surfaceListener{
        .configure = [](void* data, xdg_surface* surface, std::uint32_t serial) {
            xdg_surface_ack_configure(surface, serial);
            static_cast<WaylandWindow*>(data)->show();
        }};
    static constexpr xdg_toplevel_listener toplevelListener{
        .configure = [](void*, xdg_toplevel*, std::int32_t, std::int32_t, wl_array*) {},
        .close = [](void*, xdg_toplevel*) {}};
    if (!compositor_ || !memory_ || !base_) throw std::runtime_error("no compositor makes windows");
    xdg_wm_base_add_listener(base_, &baseListener, this);
    surface_ = wl_compositor_create_surface(compositor_);
    shellSurface_ = xdg_wm_base_get_xdg_surface(base_, surface_);
    xdg_surface_add_listener(shellSurface_, &surfaceListener, this);
    toplevel_ = xdg_surface_get_toplevel(shellSurface_);
    xdg_toplevel_add_listener(toplevel_, &toplevelListener, this);
    xdg_toplevel_set_app_id(toplevel_, appId.c_str());
    xdg_toplevel_set_title(toplevel_, title.c_str());
    wl_surface_commit(surface_);
    connection_.settle();
}

WaylandWindow::~WaylandWindow() {
    if (buffer_) wl_buffer_destroy(buffer_);
    xdg_toplevel_destroy(toplevel_);
    xdg_surface_destroy(shellSurface_);
    wl_surface_destroy(surface_);
    xdg_wm_base_destroy(base_);
    wl_shm_destroy(memory_);
    wl_compositor_destroy(compositor_);
    connection_.settle();
}

void WaylandWindow::show() {
    if (!buffer_) buffer_ = makeBuffer(memory_);
    wl_surface_attach(surface_, buffer_, 0, 0);
    wl_surface_commit(surface_);
}

void WaylandWindow::setTitle(const std::string& title) {
    xdg_toplevel_set_title(toplevel_, title.c_str());
    connection_.settle();
}

}  // namespace quorvane
