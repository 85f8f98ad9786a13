#include "platform/simulated/SimulatedAutomation.h"

namespace quorvane::platform {

ScriptResult SimulatedAutomation::run(const Script& script) {
    {
        const std::lock_guard lock(mutex_);
        scripts_.push_back(script);
    }
    return answer_ ? answer_(script) : ScriptResult();
}

std::string SimulatedAutomation::scriptIdentity(const std::string& bundleIdentifier) {
    const auto model = models_.find(bundleIdentifier);
    return model == models_.end() ? bundleIdentifier : model->second;
}

Channel SimulatedAutomation::channel() {
    return {.question = "automation", .name = "simulated", .isAvailable = true};
}

std::vector<Script> SimulatedAutomation::scripts() const {
    const std::lock_guard lock(mutex_);
    return scripts_;
}

}  // namespace quorvane::platform
