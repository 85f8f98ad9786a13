#include "platform/simulated/RecordingSystemLog.h"

namespace quorvane::platform {

void RecordingSystemLog::write(SystemLogType type, std::string_view line) {
    const std::lock_guard lock(mutex_);
    lines_.push_back({type, std::string(line)});
}

std::vector<RecordingSystemLog::Line> RecordingSystemLog::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

}  // namespace quorvane::platform
