#include "platform/linux/DisplaySession.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// A crashed compositor leaves its socket behind, so only one that lets us in counts.
bool someoneListensAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) return false;
    const bool connected = connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return connected;
}

}  // namespace

bool isWaylandSession() {
    auto name = environment("WAYLAND_DISPLAY");
    if (name.empty()) name = "wayland-0";
    if (name.front() == '/') return someoneListensAt(name);
    const auto runtimeDirectory = environment("XDG_RUNTIME_DIR");
    return !runtimeDirectory.empty() && someoneListensAt(std::filesystem::path(runtimeDirectory) / name);
}

std::unique_ptr<X11Connection> connectToDisplay(X11Connection::Reader reader) {
    if (!isWaylandSession()) return std::make_unique<X11Connection>(reader);
    return std::make_unique<X11Connection>(
        "Wayland", "Wayland sessions are not supported yet: windows and input of other applications can't be seen here",
        "Choose an X11 session at the login screen, often called \"Xorg\" or \"X11\".");
}

}  // namespace quorvane::platform
