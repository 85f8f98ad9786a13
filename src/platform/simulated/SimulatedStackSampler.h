#pragma once

#include "platform/StackSampler.h"

#include <functional>

namespace quorvane::platform {

/// A tool whose doings a test scripts.
class SimulatedStackSampler final : public StackSampler {
public:
    bool installed = true;
    std::string refusal;              ///< why it does not begin; empty: it does
    std::string text = "stacks\n";    ///< what it writes
    Seconds needs = 2s;               ///< until it ends; more than 122 s is too long
    int status = 0;                   ///< that it ends with
    std::function<void()> whileBusy;  ///< what else happens meanwhile, once for each time

    int starts = 0;  ///< so far
    int terminations = 0;
    std::filesystem::path lastOutput;

    [[nodiscard]] const Tool& tool() const override { return tool_; }
    [[nodiscard]] bool isInstalled() const override { return installed; }
    [[nodiscard]] std::variant<std::unique_ptr<StackSampling>, std::string>
    start(int seconds, const std::filesystem::path& output) override;

private:
    Tool tool_{.name = "eu-stack", .path = "/usr/bin/eu-stack", .format = "linux-eu-stack-v1"};
};

}  // namespace quorvane::platform
