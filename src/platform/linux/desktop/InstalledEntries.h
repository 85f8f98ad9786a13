#pragma once

#include "platform/linux/desktop/DesktopEntry.h"

#include <filesystem>
#include <vector>

namespace quorvane::platform {

/// What is installed at one moment.
struct InstalledEntries {
    std::vector<DesktopEntry> entries;               ///< by id
    std::vector<std::filesystem::path> directories;  ///< whose changes may change that
};

/// Reads the desktop files. `dataDirectories` are the parents of "applications", the more important first: a file hides
/// those of the same id further down. From any thread.
[[nodiscard]] InstalledEntries installedEntries(const std::vector<std::filesystem::path>& dataDirectories);

}  // namespace quorvane::platform
