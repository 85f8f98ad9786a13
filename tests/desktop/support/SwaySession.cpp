#include "desktop/support/SwaySession.h"

#include "desktop/support/Waiting.h"

#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace quorvane {
namespace {

/// The compositor refuses to run for the superuser.
std::vector<std::string> asNobody(std::vector<std::string> command) {
    if (::geteuid() == 0)
        command.insert(command.begin(), {"setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"});
    return command;
}

void swaymsg(const std::string& command) {
    if (run({"swaymsg", command}) != 0) throw std::runtime_error("sway refuses " + command);
}

}  // namespace

SwaySession::SwaySession(bool hasX11) {
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::all);
    environment_.set("WLR_BACKENDS", "headless");
    environment_.set("WLR_LIBINPUT_NO_DEVICES", "1");
    environment_.set("WLR_RENDERER", "pixman");
    environment_.set("LC_ALL", "C.UTF-8");  // foot starts in no locale that isn't there
    environment_.set("SWAYSOCK", folder_ / "ipc");
    std::ofstream(folder_ / "sway") << "output HEADLESS-1 resolution 800x600\nfocus_follows_mouse no\nxwayland "
                                    << (hasX11 ? "enable\n" : "disable\n");
    start();
}

void SwaySession::start() {
    environment_.unset("WAYLAND_DISPLAY");
    for (const char* left : {"wayland-1", "wayland-1.lock", "ipc"})
        std::filesystem::remove(folder_ / left);
    compositor_ = std::make_unique<ChildProcess>(asNobody({"sway", "-c", (folder_ / "sway").string()}));
    environment_.set("WAYLAND_DISPLAY", "wayland-1");
    const auto isThere = [&] { return std::filesystem::exists(folder_ / "ipc") && run({"swaymsg", "nop"}) == 0; };
    if (!waitUntil(isThere, 10s)) throw std::runtime_error("sway does not start");
}

void SwaySession::focus(const std::string& appId) const {
    swaymsg("[app_id=" + appId + "] focus");
}

void SwaySession::exec(const std::string& command) const {
    swaymsg("exec " + command);
}

void SwaySession::focusTitled(const std::string& title) const {
    swaymsg("[title=" + title + "] focus");
}

}  // namespace quorvane
