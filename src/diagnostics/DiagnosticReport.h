#pragma once

#include "base/Date.h"
#include "diagnostics/ApplicationInfo.h"
#include "diagnostics/LogEntry.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// The text that a user hands to support: versions, counts and every line of the log, sanitised once more.
[[nodiscard]] std::string diagnosticReport(const LogEntries& logs, const ApplicationInfo& application, Date now);

/// "Quorvane_Diagnostic_2026-03-02_09-00-00.txt", in the local time zone.
[[nodiscard]] std::string diagnosticReportFileName(Date now);

/// Writes the whole report or nothing. What went wrong, in words for people; none when it is saved.
[[nodiscard]] std::optional<std::string> saveDiagnosticReport(const std::filesystem::path& path,
                                                              std::string_view report);

}  // namespace quorvane
