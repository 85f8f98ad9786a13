#pragma once

#include "platform/linux/bus/SessionBusQuestions.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quorvane::platform {

/// The folder that a file manager's window shows, by what the file manager publishes (org.freedesktop.FileManager1, if
/// it is this process that does, or nobody tells the process, 0), else by the window's title. It exists; an empty path
/// if nothing tells.
[[nodiscard]] std::filesystem::path frontFolder(SessionBusQuestions& bus, pid_t pid, std::string_view title,
                                                const std::vector<std::string>& applicationNames);

}  // namespace quorvane::platform
