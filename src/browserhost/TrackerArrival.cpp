#include "browserhost/TrackerArrival.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <sys/inotify.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr std::uint32_t appearance = IN_CREATE | IN_MOVED_TO | IN_ONLYDIR;

}  // namespace

TrackerArrival::TrackerArrival(const std::optional<std::filesystem::path>& socket)
    : socket_(socket.value_or("")), inotify_(socket ? ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC) : -1) {
    watch();
}

TrackerArrival::~TrackerArrival() {
    if (inotify_ >= 0) ::close(inotify_);
}

void TrackerArrival::watch() {
    if (inotify_ < 0) return;
    const auto folder = socket_.parent_path();
    folder_ = ::inotify_add_watch(inotify_, folder.c_str(), appearance);
    if (folder_ >= 0 && above_ >= 0) {
        ::inotify_rm_watch(inotify_, above_);
        above_ = -1;
    } else if (folder_ < 0) {
        above_ = ::inotify_add_watch(inotify_, folder.parent_path().c_str(), appearance);
    }
}

bool TrackerArrival::notice() {
    bool hasArrived = false;
    alignas(inotify_event) std::array<char, 4096> events;
    for (ssize_t got = 0; (got = ::read(inotify_, events.data(), events.size())) > 0;) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            inotify_event event;
            std::memcpy(&event, events.data() + at, sizeof event);
            const std::string_view name(event.len > 0 ? events.data() + at + sizeof event : "");
            at += sizeof event + event.len;
            if (event.wd == folder_ && (event.mask & IN_IGNORED) != 0) {
                watch();  // the folder itself has gone
            } else if (event.wd == folder_) {
                hasArrived = hasArrived || name == socket_.filename().native();
            } else if (event.wd == above_ && name == socket_.parent_path().filename().native()) {
                watch();
                hasArrived = true;  // the socket may have been quicker than the watch
            }
        }
    }
    return hasArrived;
}

}  // namespace quorvane
