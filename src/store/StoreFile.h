#pragma once

#include "store/ModelConfiguration.h"

namespace quorvane::StoreFile {

enum class State { missing, empty, store };

/// Looks at the file without changing it or anything beside it. What must not be opened is refused with `StoreError`:
/// no file, no rights, no database, not ours, newer, cut short, read-only where it is to be written.
[[nodiscard]] State inspect(const ModelConfiguration& configuration);

/// Makes the folders of the file, for the user alone. Throws `StoreError`.
void makeFolder(const std::filesystem::path& file);

}  // namespace quorvane::StoreFile
