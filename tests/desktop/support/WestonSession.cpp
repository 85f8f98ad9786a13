#include "desktop/support/WestonSession.h"

#include "desktop/support/Waiting.h"

#include <stdexcept>

namespace quorvane {

WestonSession::WestonSession() {
    start();
}

void WestonSession::start() {
    environment_.unset("WAYLAND_DISPLAY");
    compositor_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "weston", "--backend=headless-backend.so", "--socket=wayland-7", "--no-config", "--idle-time=0"});
    environment_.set("WAYLAND_DISPLAY", "wayland-7");
    if (!waitUntil([&] { return std::filesystem::exists(folder_ / "wayland-7"); }, 10s))
        throw std::runtime_error("weston does not start");
}

}  // namespace quorvane
