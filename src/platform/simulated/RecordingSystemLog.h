#pragma once

#include "platform/SystemLog.h"

#include <mutex>
#include <string>
#include <vector>

namespace quorvane::platform {

/// A system log that keeps what was written to it.
class RecordingSystemLog : public SystemLog {
public:
    struct Line {
        SystemLogType type = SystemLogType::standard;
        std::string text;
        friend bool operator==(const Line&, const Line&) = default;
    };

    void write(SystemLogType type, std::string_view line) override;

    /// All lines so far, in the order in which they came.
    [[nodiscard]] std::vector<Line> lines() const;

private:
    mutable std::mutex mutex_;  ///< guards `lines_`
    std::vector<Line> lines_;
};

}  // namespace quorvane::platform
