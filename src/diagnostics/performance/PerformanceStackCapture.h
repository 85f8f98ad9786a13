#pragma once

#include "diagnostics/AppLogger.h"
#include "platform/StackSampler.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>

namespace quorvane {

/// Gets the call stacks of this process as a text.
class PerformanceStackCapture {
public:
    static constexpr Seconds pollInterval = 0.1s;
    static constexpr Seconds patience = 120s;  ///< how much longer than the capture the tool may take

    /// Both outlive it. `folder` takes the tool's file meanwhile; by default the system's for temporary files.
    PerformanceStackCapture(platform::StackSampler& sampler, AppLogger& logger,
                            std::filesystem::path folder = temporaryFolder());

    /// Blocks for that many seconds (> 0) and the time that the tool needs. None if there is no text, which is logged,
    /// or once a stop is asked for, which is not. On one thread at a time, which is not the main one.
    [[nodiscard]] std::optional<std::string> capture(int seconds, const std::stop_token& stop = {});

private:
    [[nodiscard]] static std::filesystem::path temporaryFolder();
    [[nodiscard]] std::optional<std::string> sample(int seconds, const std::filesystem::path& output,
                                                    const std::stop_token& stop);
    void warn(const std::string& message);

    platform::StackSampler& sampler_;
    AppLogger& logger_;
    std::filesystem::path folder_;
};

}  // namespace quorvane
