#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvane::platform {

/// The bytes of a small file, also of one in /proc; none if it can't be read or exceeds 1 MiB.
[[nodiscard]] std::optional<std::string> wholeFile(const std::filesystem::path& path);

}  // namespace quorvane::platform
