#include "browserhost/BrowserSocket.h"

#include <cstdlib>
#include <cstring>
#include <sys/socket.h>

namespace quorvane::BrowserSocket {

std::optional<std::filesystem::path> path() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (!runtime || *runtime != '/') return std::nullopt;
    return std::filesystem::path(runtime) / "quorvane/browser.sock";
}

std::optional<sockaddr_un> address(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& text = path.native();
    if (text.size() >= sizeof address.sun_path) return std::nullopt;
    std::memcpy(address.sun_path, text.data(), text.size());
    return address;
}

int make() {
    return ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

bool connect(int descriptor, const sockaddr_un& address) {
    return ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace quorvane::BrowserSocket
