#include "support/RecordingConsole.h"

namespace quorvane {

void RecordingConsole::write(std::string_view line) {
    const std::lock_guard guard(mutex_);
    lines_.emplace_back(line);
}

std::vector<std::string> RecordingConsole::lines() const {
    const std::lock_guard guard(mutex_);
    return lines_;
}

void RecordingConsole::clear() {
    const std::lock_guard guard(mutex_);
    lines_.clear();
}

}  // namespace quorvane
