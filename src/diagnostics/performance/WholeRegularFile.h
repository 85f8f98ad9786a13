#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvane {

/// The bytes of a file. None if it can't be read, or is a folder, or a pipe, for which one might wait for ever.
[[nodiscard]] std::optional<std::string> wholeRegularFile(const std::filesystem::path& path);

}  // namespace quorvane
