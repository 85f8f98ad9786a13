#pragma once

#include "platform/Channel.h"
#include "platform/SystemLog.h"

#include <string>

namespace quorvane::platform {

/// The journal where its socket is, else syslog. Lines carry SUBSYSTEM=zelkor.quorvane.main and CATEGORY=AppLogger.
class LinuxSystemLog final : public SystemLog {
public:
    explicit LinuxSystemLog(std::string journalSocket = "/run/systemd/journal/socket");
    LinuxSystemLog(const LinuxSystemLog&) = delete;
    LinuxSystemLog& operator=(const LinuxSystemLog&) = delete;
    ~LinuxSystemLog() override;

    /// What is longer than 48 KiB is cut there: the journal takes no larger message in this form.
    void write(SystemLogType type, std::string_view line) override;

    [[nodiscard]] Channel channel() const;

private:
    [[nodiscard]] bool sendToJournal(const std::string& message) const;

    std::string journalSocket_;
    int descriptor_ = -1;
};

}  // namespace quorvane::platform
