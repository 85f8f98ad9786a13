#pragma once

#include "platform/Automation.h"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace quorvane::platform {

/// Answers scripts as a test says.
class SimulatedAutomation : public Automation {
public:
    [[nodiscard]] ScriptResult run(const Script& script) override;
    [[nodiscard]] Channel channel() override;

    [[nodiscard]] std::string scriptIdentity(const std::string& bundleIdentifier) override;

    /// Asked as the well-known application from now on. Before anybody asks.
    void setModel(const std::string& bundleIdentifier, const std::string& model) { models_[bundleIdentifier] = model; }

    /// What each script gets from now on; until then an empty text.
    void answer(std::function<ScriptResult(const Script&)> answer) { answer_ = std::move(answer); }
    [[nodiscard]] std::vector<Script> scripts() const;

private:
    std::function<ScriptResult(const Script&)> answer_;
    std::map<std::string, std::string> models_;
    mutable std::mutex mutex_;  ///< guards `scripts_`
    std::vector<Script> scripts_;
};

}  // namespace quorvane::platform
