#include "browserhost/TrackerConnection.h"

#include "browserhost/BrowserSocket.h"

#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane {

bool TrackerConnection::send(std::string_view message) {
    constexpr int attempts = 2;  // the tracker may have been started anew
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (descriptor_ < 0 && !connect()) return false;
        if (::send(descriptor_, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0) return true;
        if (errno == EAGAIN || errno == EINTR || errno == EMSGSIZE || errno == ENOBUFS) return false;
        close();
    }
    return false;
}

bool TrackerConnection::connect() {
    const auto address = socket_ ? BrowserSocket::address(*socket_) : std::nullopt;
    if (!address) return false;
    descriptor_ = BrowserSocket::make();
    if (descriptor_ >= 0 && !BrowserSocket::connect(descriptor_, *address)) close();
    return descriptor_ >= 0;
}

void TrackerConnection::close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

}  // namespace quorvane
