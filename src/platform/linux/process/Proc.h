#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

/// What the kernel tells about processes. What it hides from us, and what is gone meanwhile, is empty. From any thread.
namespace quorvane::platform::Proc {

/// A line of /proc/PID/stat.
struct Status {
    char state = '?';       ///< 'Z': has ended and its parent has not noticed
    pid_t session = 0;      ///< the process that leads it
    unsigned terminal = 0;  ///< the device number of the controlling terminal; 0: none
    pid_t foreground = 0;   ///< the process group that the terminal listens to; -1: none
    friend bool operator==(const Status&, const Status&) = default;
};

/// None if it is no such line. The name of the program, which stands in brackets, may hold anything.
[[nodiscard]] std::optional<Status> parseStatus(std::string_view line);
[[nodiscard]] std::optional<Status> status(pid_t pid);

[[nodiscard]] bool hasEnded(pid_t pid);

/// The number N of the pseudo-terminal /dev/pts/N with this device number; none for another device.
[[nodiscard]] std::optional<unsigned> pseudoTerminal(unsigned device);

/// Of all its threads; at most 256.
[[nodiscard]] std::vector<pid_t> children(pid_t pid);

[[nodiscard]] std::filesystem::path workingDirectory(pid_t pid);

/// The command line with the program itself, at most 256 of its parts.
[[nodiscard]] std::vector<std::string> arguments(pid_t pid);

/// Under what names it may be known: of its file with and without suffix, as it was called, the script that it runs.
/// Without repetition, at least two characters each.
[[nodiscard]] std::vector<std::string> programNames(pid_t pid);

/// What its first 4096 descriptors stand for, as far as these are files or directories and not devices. The standard
/// streams are left out: a log that catches what a program prints is nothing that it has open.
[[nodiscard]] std::vector<std::filesystem::path> openPaths(pid_t pid);

}  // namespace quorvane::platform::Proc
