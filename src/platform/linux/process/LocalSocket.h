#pragma once

#include <string>
#include <sys/types.h>

/// Unix sockets of other programs.
namespace quorvane::platform::LocalSocket {

/// A connection to whoever listens there, that never blocks and no program that is started inherits; -1 where nobody
/// lets us in.
[[nodiscard]] int connectTo(const std::string& path);

/// The process that made the socket at whose other end we are; 0 if nobody tells.
[[nodiscard]] pid_t peerOf(int descriptor);

}  // namespace quorvane::platform::LocalSocket
