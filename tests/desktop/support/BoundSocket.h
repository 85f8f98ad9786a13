#pragma once

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvane {

/// A socket at a path where a service would have one.
class BoundSocket {
public:
    /// `type` is SOCK_STREAM or SOCK_DGRAM.
    BoundSocket(const std::filesystem::path& path, int type, bool listens = false)
        : descriptor_(socket(AF_UNIX, type | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listens ? listen(descriptor_, 1) : 0, 0);
    }
    BoundSocket(const BoundSocket&) = delete;
    BoundSocket& operator=(const BoundSocket&) = delete;
    ~BoundSocket() { close(descriptor_); }

    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

}  // namespace quorvane
