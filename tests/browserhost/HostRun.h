#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace quorvane {

/// A message as a browser writes it: its length in the machine's byte order and then itself.
[[nodiscard]] std::string nativeMessage(std::string_view json);

/// The real host, with this process for its browser.
class HostRun {
public:
    explicit HostRun(const std::filesystem::path& runtimeDirectory);
    HostRun(const HostRun&) = delete;
    HostRun& operator=(const HostRun&) = delete;
    ~HostRun();

    /// Writes all of it; false if the host stops reading.
    bool write(std::string_view bytes) const;

    struct Result {
        int status = -1;  ///< 128 and the signal's number if a signal ended it
        std::string err;
        long mostMemory = 0;  ///< KiB resident at its largest
    };

    /// Ends its input and waits for its end.
    [[nodiscard]] Result finish();

private:
    pid_t process_ = 0;
    int input_ = -1;
    int err_ = -1;
};

/// Where a tracker listens.
class ListeningTracker {
public:
    explicit ListeningTracker(const std::filesystem::path& socket);
    ListeningTracker(const ListeningTracker&) = delete;
    ListeningTracker& operator=(const ListeningTracker&) = delete;
    ~ListeningTracker();

    /// The next packet of the host; "nothing" if none comes in `milliseconds`.
    [[nodiscard]] std::string next(int milliseconds = 5000);

private:
    int listener_;
    int connection_ = -1;
};

}  // namespace quorvane
