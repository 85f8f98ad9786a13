#pragma once

#include <filesystem>

namespace quorvane {

/// The file that says which process tracks into a store: beside the store, so that every program finds it.
[[nodiscard]] std::filesystem::path trackerLockFile(const std::filesystem::path& store);

}  // namespace quorvane
