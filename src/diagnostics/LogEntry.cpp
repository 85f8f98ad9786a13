#include "diagnostics/LogEntry.h"

#include "base/DateText.h"
#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace quorvane {

std::string LogEntry::formattedLog() const {
    return fmt::format("[{}] [{}] [{}] {}", localDateText(timestamp, "yyyy-MM-dd HH:mm:ss.SSS"), rawValue(level),
                       module, message);
}

LogStatistics statistics(const LogEntries& logs) {
    const auto count = [&](LogLevel level) {
        return static_cast<int>(std::ranges::count(logs, level, &LogEntry::level));
    };
    return {.total = static_cast<int>(logs.size()),
            .debug = count(LogLevel::debug),
            .info = count(LogLevel::info),
            .warning = count(LogLevel::warning),
            .error = count(LogLevel::error)};
}

std::vector<LogEntry> filteredLogs(const LogEntries& logs, std::optional<LogLevel> level, std::string_view searchText) {
    const std::string wanted = text::lowercased(searchText);
    const auto contains = [&](const std::string& whole) {
        return text::lowercased(whole).find(wanted) != std::string::npos;
    };
    std::vector<LogEntry> kept;
    std::ranges::copy_if(logs, std::back_inserter(kept), [&](const LogEntry& entry) {
        return (!level || entry.level == *level) &&
               (wanted.empty() || contains(entry.message) || contains(entry.module));
    });
    return kept;
}

}  // namespace quorvane
