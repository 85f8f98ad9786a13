#include "platform/linux/system/LinuxSystemLog.h"

#include "base/Text.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr const char* syslogSocket = "/dev/log";
constexpr std::size_t longestLine = 49'152;

int priorityOf(SystemLogType type) {
    switch (type) {
    case SystemLogType::debug: return LOG_DEBUG;
    case SystemLogType::standard: return LOG_INFO;
    case SystemLogType::error: return LOG_ERR;
    }
    return LOG_INFO;
}

/// A text that may have line ends: the name, a line end, the length as 64 bits with the lowest first, the bytes.
void appendField(std::string& message, std::string_view name, std::string_view value) {
    (message += name) += '\n';
    for (std::uint64_t length = value.size(), i = 0; i < 8; ++i, length >>= 8)
        message += static_cast<char>(length & 0xff);
    (message += value) += '\n';
}

}  // namespace

LinuxSystemLog::LinuxSystemLog(Origin origin, std::string journalSocket)
    : origin_(std::move(origin)), journalSocket_(std::move(journalSocket)),
      descriptor_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}

LinuxSystemLog::~LinuxSystemLog() {
    if (descriptor_ >= 0) close(descriptor_);
}

void LinuxSystemLog::write(SystemLogType type, std::string_view line) {
    const auto text = text::validUtf8(line.substr(0, longestLine));
    std::string message = fmt::format("PRIORITY={}\nSYSLOG_IDENTIFIER=quorvane\nSUBSYSTEM={}\nCATEGORY={}\n",
                                      priorityOf(type), origin_.subsystem, origin_.category);
    appendField(message, "MESSAGE", text);
    if (sendToJournal(message)) return;
    std::error_code error;
    if (std::filesystem::exists(syslogSocket, error))
        syslog(LOG_USER | priorityOf(type), "%s %s: %s", origin_.subsystem.c_str(), origin_.category.c_str(),
               text.c_str());
}

bool LinuxSystemLog::sendToJournal(const std::string& message) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (descriptor_ < 0 || journalSocket_.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, journalSocket_.c_str(), journalSocket_.size() + 1);
    return sendto(descriptor_, message.data(), message.size(), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0;
}

Channel LinuxSystemLog::channel() const {
    Channel channel{.question = "system log", .name = "journald", .isAvailable = true};
    std::error_code error;
    if (std::filesystem::exists(journalSocket_, error)) return channel;
    channel.name = "syslog";
    if (std::filesystem::exists(syslogSocket, error)) return channel;
    return {.question = "system log",
            .name = "journald, syslog",
            .reason = fmt::format("neither {} nor {} is there", journalSocket_, syslogSocket),
            .remedy = "None is needed: the log in the application has the same lines."};
}

}  // namespace quorvane::platform
