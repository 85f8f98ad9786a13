#pragma once

#include "base/Date.h"

#include <filesystem>
#include <memory>
#include <string>
#include <variant>

namespace quorvane::platform {

/// A tool at work that writes the call stacks of this process to a file. Destroying it ends the tool.
class StackSampling {
public:
    virtual ~StackSampling() = default;

    /// Waits for at most `duration`; true once the tool has ended.
    [[nodiscard]] virtual bool hasEndedWithin(Seconds duration) = 0;

    /// Of a tool that has ended; 0: the file has stacks.
    [[nodiscard]] virtual int exitStatus() const = 0;

    /// Ends it soon; what it has written is worth nothing.
    virtual void terminate() = 0;
};

/// Makes texts of the call stacks of this process. On one thread at a time, which is not the main one.
class StackSampler {
public:
    /// The desktop's tool for it.
    struct Tool {
        std::string name;    ///< "eu-stack"
        std::string path;    ///< "/usr/bin/eu-stack"
        std::string format;  ///< names the form of its text for whoever reads reports: "linux-eu-stack-v1"
    };

    virtual ~StackSampler() = default;

    [[nodiscard]] virtual const Tool& tool() const = 0;
    [[nodiscard]] virtual bool isInstalled() const = 0;

    /// Begins to watch the stacks for so many seconds (> 0) and to write them to `output`, which it makes anew. A text
    /// instead says why it could not begin.
    [[nodiscard]] virtual std::variant<std::unique_ptr<StackSampling>, std::string>
    start(int seconds, const std::filesystem::path& output) = 0;
};

}  // namespace quorvane::platform
