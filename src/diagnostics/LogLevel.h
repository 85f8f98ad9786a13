#pragma once

#include <array>
#include <string_view>
#include <utility>

namespace quorvane {

/// How much a line of the log matters, least first.
enum class LogLevel { debug, info, warning, error };

/// Every level with its text, in order.
inline constexpr std::array<std::pair<LogLevel, std::string_view>, 4> logLevels{{
    {LogLevel::debug, "DEBUG"},
    {LogLevel::info, "INFO"},
    {LogLevel::warning, "WARNING"},
    {LogLevel::error, "ERROR"},
}};

[[nodiscard]] constexpr std::string_view rawValue(LogLevel level) {
    return logLevels[static_cast<std::size_t>(level)].second;
}

}  // namespace quorvane
