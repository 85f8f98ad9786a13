#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quorvane::platform {

/// A program that may trace this process for as long as it runs, and nobody else because of it. It ends at the latest
/// with the thread that has started it. One thread at a time.
class TracingChild {
public:
    TracingChild() = default;
    TracingChild(const TracingChild&) = delete;
    TracingChild& operator=(const TracingChild&) = delete;
    ~TracingChild() { kill(); }

    /// Starts `arguments[0]`, which is a path, with standard output to this descriptor and an empty environment. An
    /// empty text, or why it could not.
    [[nodiscard]] std::string start(std::vector<std::string> arguments, int output);

    [[nodiscard]] bool isRunning() const { return pid_ != 0; }

    /// Its exit status once it has ended, 128 and the signal if one ended it; none while it runs.
    [[nodiscard]] std::optional<int> poll();

    void kill();

private:
    std::optional<int> wait(int options);

    pid_t pid_ = 0;  ///< 0: none
};

}  // namespace quorvane::platform
