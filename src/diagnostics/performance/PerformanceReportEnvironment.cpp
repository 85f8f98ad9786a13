#include "diagnostics/performance/PerformanceReportEnvironment.h"

#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane::PerformanceReportEnvironment {
namespace {

constexpr std::string_view plainCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._:+-";

std::string cleanedVersion(const std::optional<std::string>& version) {
    return cleaned(version.value_or(""), longestVersion).value_or("0");
}

}  // namespace

std::optional<std::string> cleaned(std::string_view text, std::size_t longest) {
    auto trimmed = text::trimmedWithNewlines(text);
    const bool isPlain = trimmed.find_first_not_of(plainCharacters) == std::string::npos;
    return isPlain && !trimmed.empty() && trimmed.size() <= longest ? std::optional(std::move(trimmed)) : std::nullopt;
}

std::string appVersion(const ApplicationInfo& application) {
    return cleanedVersion(application.shortVersion);
}

std::string build(const ApplicationInfo& application) {
    return cleanedVersion(application.build);
}

std::optional<std::string> locale(const Surroundings& surroundings) {
    const auto& preferred = surroundings.preferredLocalizations;
    std::string locale = preferred.empty() ? surroundings.currentLocale : preferred.front();
    std::ranges::replace(locale, '_', '-');
    return cleaned(locale, longestLocale);
}

std::string activeSurface(const Surroundings& surroundings) {
    const char* surface = "background";
    if (surroundings.hasWindow) surface = surroundings.isActive ? "foreground" : "window_inactive";
    return cleaned(fmt::format("{}{}", surfacePrefix, surface), longestSurface)
        .value_or(fmt::format("{}unknown", surfacePrefix));
}

std::string userAgent(const ApplicationInfo& application, const platform::SystemInfo& system) {
    return fmt::format("Quorvane/{} ({}; {} {}; {})", appVersion(application), build(application), system.name,
                       system.version, system.architecture);
}

}  // namespace quorvane::PerformanceReportEnvironment
