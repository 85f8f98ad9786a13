#pragma once

#include <filesystem>
#include <optional>

namespace quorvane {

/// Notices that a tracker begins to listen, without a wake-up before: its socket appears. Where the kernel has no watch
/// left nothing is noticed.
class TrackerArrival {
public:
    explicit TrackerArrival(const std::optional<std::filesystem::path>& socket);
    TrackerArrival(const TrackerArrival&) = delete;
    TrackerArrival& operator=(const TrackerArrival&) = delete;
    ~TrackerArrival();

    /// Is readable when there is something to notice; -1 if there never will be.
    [[nodiscard]] int descriptor() const { return inotify_; }

    /// Reads what happened; true if a socket may be there now that was not there before.
    [[nodiscard]] bool notice();

private:
    void watch();

    std::filesystem::path socket_;
    int inotify_ = -1;
    int folder_ = -1;  ///< the watch of the socket's folder
    int above_ = -1;   ///< the watch of the folder above, as long as that one is missing
};

}  // namespace quorvane
