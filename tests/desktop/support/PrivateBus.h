#pragma once

#include "desktop/support/ChildProcess.h"

#include <filesystem>
#include <string>

namespace quorvane {

/// A message bus without services to start, so that nothing runs there but what the test starts.
class PrivateBus {
public:
    /// It listens at `socket` when this is made.
    explicit PrivateBus(const std::filesystem::path& socket);

    [[nodiscard]] std::string address() const { return "unix:path=" + socket_.string(); }
    void send(int signal) const { daemon_.send(signal); }

private:
    std::filesystem::path socket_;
    ChildProcess daemon_;
};

}  // namespace quorvane
