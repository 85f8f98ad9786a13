#pragma once

#include <filesystem>
#include <string_view>
#include <sys/types.h>

namespace quorvane::platform {

/// The directory in which a terminal's foreground program works; an empty path if the process is no terminal. A
/// terminal is what has children that lead a session on a terminal device, its shells. Of several, one in each tab, it
/// is the one whose directory the window's title names, else the one that was last read from. Where the process is not
/// known, 0, it is what the title ends with, as shells set it: "me@host: ~/work".
[[nodiscard]] std::filesystem::path terminalDirectory(pid_t pid, std::string_view title);

}  // namespace quorvane::platform
