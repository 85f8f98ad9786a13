#pragma once

#include "platform/StackSampler.h"

namespace quorvane::platform {

/// The stacks of all threads by `eu-stack` of elfutils, which stops each thread for the moment in which it reads its
/// stack. It runs every half second, so that what a thread does all the time stands in each of the texts that follow
/// one another in the file. While it runs, and only then, this process lets it trace, so that an ordinary user under
/// the usual restriction (Yama) needs no right for it. It gets an environment that keeps it from asking servers for
/// symbols.
class EuStackSampler final : public StackSampler {
public:
    static constexpr Seconds snapshotInterval = 0.5s;

    /// `path`: another program that takes its arguments.
    explicit EuStackSampler(const std::string& path = "/usr/bin/eu-stack");

    [[nodiscard]] const Tool& tool() const override { return tool_; }
    [[nodiscard]] bool isInstalled() const override;
    [[nodiscard]] std::variant<std::unique_ptr<StackSampling>, std::string>
    start(int seconds, const std::filesystem::path& output) override;

private:
    Tool tool_;
};

}  // namespace quorvane::platform
