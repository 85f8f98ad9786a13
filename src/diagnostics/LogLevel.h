#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// How much a line of the log matters, least first.
enum class LogLevel { debug, info, warning, error };

template <>
struct RawValues<LogLevel> {
    static constexpr RawValueTable<LogLevel, 4> table{{{LogLevel::debug, "DEBUG"},
                                                       {LogLevel::info, "INFO"},
                                                       {LogLevel::warning, "WARNING"},
                                                       {LogLevel::error, "ERROR"}}};
};

}  // namespace quorvane
