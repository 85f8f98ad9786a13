#include "platform/linux/session/DisplaySession.h"

#include "base/Environment.h"
#include "platform/linux/bus/LogindSession.h"
#include "platform/linux/process/LocalSocket.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace quorvane::platform {
namespace {

/// Where a compositor listens under that name; empty where there is no place for it.
std::string socketOf(const std::string& name) {
    if (name.empty() || name.front() == '/') return name;
    const auto runtimeDirectory = environment("XDG_RUNTIME_DIR");
    return runtimeDirectory.empty() ? std::string() : (std::filesystem::path(runtimeDirectory) / name).string();
}

/// The process that listens there. A crashed compositor leaves its socket behind, so only one that lets us in counts.
std::optional<pid_t> listenerAt(const std::string& path) {
    const int descriptor = LocalSocket::connectTo(path);
    if (descriptor < 0) return std::nullopt;
    const pid_t listener = LocalSocket::peerOf(descriptor);
    close(descriptor);
    return listener;
}

SessionKind kindOf(std::string_view sessionType) {
    if (sessionType == "wayland") return SessionKind::wayland;
    if (sessionType == "x11") return SessionKind::x11;
    return SessionKind::unknown;  // "tty" is what both have that somebody starts by hand
}

/// Does the compositor at the usual place, which nothing has named, make the windows, and not this X server?
bool isBehindCompositor(const X11Connection& x11) {
    const auto compositor = listenerAt(socketOf("wayland-0"));
    if (!compositor) return false;
    return !x11.isUsable() ||
           (*compositor != 0 && LocalSocket::peerOf(xcb_get_file_descriptor(x11.xcb())) == *compositor);
}

std::unique_ptr<X11Connection> refusedByWayland() {
    return std::make_unique<X11Connection>(
        Channel{.name = "Wayland",
                .reason = "a Wayland session keeps what is typed, clicked and shown to itself",
                .obstacle = Obstacle::wayland});
}

}  // namespace

SessionKind sessionKind() {
    if (listenerAt(socketOf(environment("WAYLAND_DISPLAY")))) return SessionKind::wayland;
    const auto kind = kindOf(environment("XDG_SESSION_TYPE"));
    return kind == SessionKind::unknown ? kindOf(LogindSession::type()) : kind;
}

std::unique_ptr<X11Connection> connectToDisplay(X11Connection::Reader reader) {
    const auto kind = sessionKind();
    if (kind == SessionKind::wayland) return refusedByWayland();
    auto x11 = std::make_unique<X11Connection>(reader);
    if (kind == SessionKind::unknown && isBehindCompositor(*x11)) return refusedByWayland();
    return x11;
}

bool isOfWaylandSession(const X11Connection& x11) {
    return x11.channel({}, {}).obstacle == Obstacle::wayland;
}

}  // namespace quorvane::platform
