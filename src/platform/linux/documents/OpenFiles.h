#pragma once

#include <filesystem>
#include <string_view>
#include <sys/types.h>
#include <vector>

/// Which of the files that a process deals with its window shows. Each answer exists; none is an empty path.
namespace quorvane::platform::OpenFiles {

[[nodiscard]] bool isFile(const std::filesystem::path& path);
[[nodiscard]] bool isFolder(const std::filesystem::path& path);

/// The open file whose name stands in the title, the longest such name.
[[nodiscard]] std::filesystem::path namedByTitle(pid_t pid, std::string_view title);

/// What the process was started with, made absolute: files that exist, without the program itself.
[[nodiscard]] std::vector<std::filesystem::path> arguments(pid_t pid);

/// The argument whose name stands in the title. Where the title tells no document's name, the only argument that is a
/// file and no program.
[[nodiscard]] std::filesystem::path argument(pid_t pid, std::string_view title, bool titleTellsName);

}  // namespace quorvane::platform::OpenFiles
