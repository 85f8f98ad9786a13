#pragma once

#include "base/Date.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quorvane {

/// A program in a process group of its own. It ends, with all that it has started, at the latest with this object or
/// with the test's process.
class ChildProcess {
public:
    /// Starts it; `command` is looked up in PATH. Where an argument is "{ready}" the number of a descriptor takes its
    /// place, whose first line `readyLine` reads. What the program prints is dropped.
    explicit ChildProcess(std::vector<std::string> command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// None when it ends, or the time does, before it has written a line.
    [[nodiscard]] std::optional<std::string> readyLine(Seconds timeout = 10s);

    /// Waits for its end and gives the exit status; -1 when it was killed.
    int wait();

    void send(int signal) const;
    void kill();
    [[nodiscard]] pid_t pid() const { return pid_; }

private:
    pid_t pid_ = 0;  ///< 0: has ended
    int ready_ = -1;
};

/// Runs a program to its end; its exit status.
int run(std::vector<std::string> command);

}  // namespace quorvane
