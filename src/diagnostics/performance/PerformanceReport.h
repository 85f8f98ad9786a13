#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// What the maker is told of a streak of high load: everything that leaves the machine, in the order in which it is
/// written.
struct PerformanceReport {
    std::string appID{};
    std::string reportID{};   ///< a random UUID, lower case
    std::string installID{};  ///< see `PerformanceReportPreferences`
    std::string appVersion{};
    std::string build{};
    std::string osVersion{};
    std::string arch{};
    std::optional<std::string> locale{};
    std::string capturedAt{};     ///< ISO 8601 in UTC, whole seconds
    std::string activeSurface{};  ///< "quorvane.foreground"
    double thresholdPercent = 0;
    double sustainedSeconds = 0;   ///< to a tenth, as are the next two
    double peakCPUPercent = 0;     ///< of one core
    double averageCPUPercent = 0;  ///< of one core
    int sampleDurationSeconds = 0;
    std::string callStacksFormat{};
    std::string callStacks{};
    friend bool operator==(const PerformanceReport&, const PerformanceReport&) = default;
};

/// The report as one line of JSON; a locale that is not there has no key. None if a number is none that JSON knows.
[[nodiscard]] std::optional<std::string> performanceReportJson(const PerformanceReport& report);

/// Reads it back; none if a key is missing or holds another kind of value.
[[nodiscard]] std::optional<PerformanceReport> parsePerformanceReport(std::string_view json);

}  // namespace quorvane
