#include "platform/simulated/SimulatedAutomation.h"

namespace quorvane::platform {

ScriptResult SimulatedAutomation::run(const Script& script) {
    {
        const std::lock_guard lock(mutex_);
        scripts_.push_back(script);
    }
    return answer_ ? answer_(script) : ScriptResult();
}

Channel SimulatedAutomation::channel() {
    return {.question = "automation", .name = "simulated", .isAvailable = true};
}

std::vector<Script> SimulatedAutomation::scripts() const {
    const std::lock_guard lock(mutex_);
    return scripts_;
}

}  // namespace quorvane::platform
