#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ApplicationInfo.h"
#include "diagnostics/ConsoleSink.h"
#include "diagnostics/LogEntry.h"
#include "platform/RunLoop.h"
#include "platform/SystemLog.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// The one logger of the process. A line goes to the console, to the system's log and to a bounded list that screens
/// follow; what it says about URLs, paths, mail addresses and credentials reaches none of the three in clear.
/// Main thread only, but for `log`.
class AppLogger {
public:
    static constexpr std::size_t maxLogCount = 1000;

    AppLogger(platform::RunLoop& runLoop, platform::SystemLog& systemLog, ConsoleSink& console,
              ApplicationInfo application);

    /// The process's logger. Each program makes it where it puts its objects together, hands it to `setShared` before
    /// anything asks for it, and takes it back with null before it goes.
    [[nodiscard]] static AppLogger& shared();
    static void setShared(AppLogger* logger);

    /// Writes one line. Console and system log have it on return, the list on a later turn of the run loop. From any
    /// thread, for as long as the logger lives.
    void log(std::string_view message, LogLevel level, std::string_view module);

    /// Puts a message that is free of private data into the list alone, dated now; the oldest entry above `maxLogCount`
    /// goes.
    void addLogEntry(std::string message, LogLevel level, std::string module);

    [[nodiscard]] const LogEntries& logs() const { return logs_; }
    Signal<> logsChanged;

    /// The last `count` entries (>= 0), or all if there are fewer.
    [[nodiscard]] std::vector<LogEntry> recentLogs(int count) const;
    [[nodiscard]] std::vector<LogEntry> logsOfLevel(LogLevel level) const;

    /// The entries whose message or module contains the keyword, in whatever case; an empty one finds all.
    [[nodiscard]] std::vector<LogEntry> searchLogs(std::string_view keyword) const;
    [[nodiscard]] LogStatistics logStatistics() const;

    /// Empties the list. The line that says so is logged first and arrives afterwards: it is what the list then holds.
    void clearLogs();

    /// The report on what is in the list now; see `diagnosticReport`.
    [[nodiscard]] std::string exportDiagnosticReport() const;

private:
    platform::RunLoop& runLoop_;
    platform::SystemLog& systemLog_;
    ConsoleSink& console_;
    ApplicationInfo application_;
    LogEntries logs_;
    WeakSource<AppLogger> weak_{*this};
};

}  // namespace quorvane
