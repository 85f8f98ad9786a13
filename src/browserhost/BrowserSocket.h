#pragma once

#include <filesystem>
#include <optional>
#include <sys/un.h>

/// Where the hosts of browsers meet the tracker: a Unix socket of sequential packets, one message a packet.
namespace quorvane::BrowserSocket {

/// "$XDG_RUNTIME_DIR/quorvane/browser.sock"; none where the variable holds no absolute path.
[[nodiscard]] std::optional<std::filesystem::path> path();

/// None if the path is too long for an address.
[[nodiscard]] std::optional<sockaddr_un> address(const std::filesystem::path& path);

/// A new socket that never blocks and no program that is started inherits; -1 if there is none to be had.
[[nodiscard]] int make();

/// True if `descriptor` is now connected.
[[nodiscard]] bool connect(int descriptor, const sockaddr_un& address);

}  // namespace quorvane::BrowserSocket
