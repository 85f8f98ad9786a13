#include "diagnostics/DiagnosticReport.h"

#include "base/AtomicFile.h"
#include "base/DateText.h"
#include "diagnostics/LogPrivacySanitizer.h"

#include <fmt/format.h>

namespace quorvane {

std::string diagnosticReport(const LogEntries& logs, const ApplicationInfo& application, Date now) {
    const std::string rule(44, '=');
    const LogStatistics counts = statistics(logs);
    std::string report =
        fmt::format("{}\nQuorvane Diagnostic Report\nVersion: {} ({})\n导出时间: {}\n日志总数: {}\n"
                    "DEBUG: {} | INFO: {} | WARNING: {} | ERROR: {}\n"
                    "Privacy: URLs, local file paths, emails and token-like values are redacted.\n{}\n",
                    rule, application.shortVersion.value_or("unknown"), application.build.value_or("unknown"),
                    mediumDateTime(now), counts.total, counts.debug, counts.info, counts.warning, counts.error, rule);
    std::string_view separator;
    for (const LogEntry& entry : logs) {
        report += separator;
        report += LogPrivacySanitizer::sanitize(entry.formattedLog());
        separator = "\n";
    }
    return report;
}

std::string diagnosticReportFileName(Date now) {
    return "Quorvane_Diagnostic_" + localDateText(now, "yyyy-MM-dd_HH-mm-ss") + ".txt";
}

std::optional<std::string> saveDiagnosticReport(const std::filesystem::path& path, std::string_view report) {
    try {
        writeFileAtomically(path, report);
        return std::nullopt;
    } catch (const FileError& error) {
        return error.what();
    }
}

}  // namespace quorvane
