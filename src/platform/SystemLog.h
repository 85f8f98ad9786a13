#pragma once

#include <string_view>

namespace quorvane::platform {

/// The severities that the system's log tells apart here.
enum class SystemLogType { debug, standard, error };

/// The machine's own log. Callable from any thread.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// One line, already free of private data. Where no log is reachable, nothing happens.
    virtual void write(SystemLogType type, std::string_view line) = 0;
};

}  // namespace quorvane::platform
