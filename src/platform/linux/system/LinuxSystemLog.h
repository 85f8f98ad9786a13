#pragma once

#include "platform/Channel.h"
#include "platform/SystemLog.h"

#include <string>
#include <utility>

namespace quorvane::platform {

/// The journal where its socket is, else syslog.
class LinuxSystemLog final : public SystemLog {
public:
    /// Whose lines they are: the fields SUBSYSTEM and CATEGORY.
    struct Origin {
        std::string subsystem = "zelkor.quorvane.main";
        std::string category = "AppLogger";
    };
    LinuxSystemLog() : LinuxSystemLog(Origin{}) {}
    explicit LinuxSystemLog(Origin origin, std::string journalSocket = "/run/systemd/journal/socket");
    explicit LinuxSystemLog(std::string journalSocket) : LinuxSystemLog(Origin{}, std::move(journalSocket)) {}
    LinuxSystemLog(const LinuxSystemLog&) = delete;
    LinuxSystemLog& operator=(const LinuxSystemLog&) = delete;
    ~LinuxSystemLog() override;

    /// What is longer than 48 KiB is cut there: the journal takes no larger message in this form.
    void write(SystemLogType type, std::string_view line) override;

    [[nodiscard]] Channel channel() const;

private:
    [[nodiscard]] bool sendToJournal(const std::string& message) const;

    Origin origin_;
    std::string journalSocket_;
    int descriptor_ = -1;
};

}  // namespace quorvane::platform
