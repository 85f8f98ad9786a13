#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "diagnostics/LogLevel.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// One line of the log.
struct LogEntry {
    Uuid id;
    Date timestamp;
    LogLevel level = LogLevel::info;
    std::string module;   ///< short tag of the component that reports: "Settings"
    std::string message;  ///< free of private data

    /// "[2026-03-02 09:00:00.000] [INFO] [Settings] message", in the local time zone.
    [[nodiscard]] std::string formattedLog() const;

    friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

/// Oldest first.
using LogEntries = std::deque<LogEntry>;

struct LogStatistics {
    int total = 0;
    int debug = 0;
    int info = 0;
    int warning = 0;
    int error = 0;
    friend bool operator==(const LogStatistics&, const LogStatistics&) = default;
};

[[nodiscard]] LogStatistics statistics(const LogEntries& logs);

/// The entries of `level`, if one is given, whose message or module contains `searchText` in whatever case; an empty
/// one is contained everywhere. Order is kept.
[[nodiscard]] std::vector<LogEntry> filteredLogs(const LogEntries& logs, std::optional<LogLevel> level,
                                                 std::string_view searchText);

}  // namespace quorvane
