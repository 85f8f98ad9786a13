#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quorvane {

/// The way from a host to the tracker. Nothing here waits and nothing is kept: what can't go at once is dropped.
class TrackerConnection {
public:
    /// Without a path nothing ever arrives.
    explicit TrackerConnection(std::optional<std::filesystem::path> socket) : socket_(std::move(socket)) {}
    TrackerConnection(const TrackerConnection&) = delete;
    TrackerConnection& operator=(const TrackerConnection&) = delete;
    ~TrackerConnection() { close(); }

    /// Connects where it isn't connected yet, and once more if the tracker has gone since. False if it was dropped.
    bool send(std::string_view message);

    /// The next message connects anew.
    void disconnect() { close(); }

private:
    bool connect();
    void close();

    std::optional<std::filesystem::path> socket_;
    int descriptor_ = -1;
};

}  // namespace quorvane
