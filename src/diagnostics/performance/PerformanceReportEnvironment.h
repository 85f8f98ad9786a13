#pragma once

#include "diagnostics/ApplicationInfo.h"
#include "platform/SystemInfo.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What reports say of the application and of where it runs. A value that could not be plain data is left out.
namespace quorvane::PerformanceReportEnvironment {

inline constexpr std::string_view applicationID = "quorvane";
inline constexpr std::string_view surfacePrefix = "quorvane.";
inline constexpr std::size_t longestVersion = 32;
inline constexpr std::size_t longestLocale = 16;
inline constexpr std::size_t longestSurface = 64;
inline constexpr std::size_t mostCallStackBytes = 6'291'456;

/// What the application's screens are at one instant.
struct Surroundings {
    bool hasWindow = false;                             ///< one that can be seen and can be the main one
    bool isActive = false;                              ///< the application has the focus
    std::vector<std::string> preferredLocalizations{};  ///< the best first; may be empty
    std::string currentLocale{};                        ///< "en_US"; stands in for the ones before
};

/// The text without blanks at its ends, if at least one and at most `longest` of A-Z a-z 0-9 . _ : + - are left.
[[nodiscard]] std::optional<std::string> cleaned(std::string_view text, std::size_t longest);

/// Cleaned, else "0".
[[nodiscard]] std::string appVersion(const ApplicationInfo& application);
[[nodiscard]] std::string build(const ApplicationInfo& application);

[[nodiscard]] std::optional<std::string> locale(const Surroundings& surroundings);

/// "quorvane." and "background", "foreground" or "window_inactive".
[[nodiscard]] std::string activeSurface(const Surroundings& surroundings);

/// "Quorvane/1.2.0 (345; Linux 6.1; x86_64)".
[[nodiscard]] std::string userAgent(const ApplicationInfo& application, const platform::SystemInfo& system);

}  // namespace quorvane::PerformanceReportEnvironment
