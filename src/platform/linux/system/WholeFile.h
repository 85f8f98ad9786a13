#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace quorvane::platform {

/// The bytes of a small file, also of one in /proc; none if it can't be read or exceeds 1 MiB.
[[nodiscard]] std::optional<std::string> wholeFile(const std::filesystem::path& path);

/// The first bytes of a file, at most so many; none if it can't be read.
[[nodiscard]] std::optional<std::string> beginningOfFile(const std::filesystem::path& path, std::size_t most);

}  // namespace quorvane::platform
