#pragma once

#include "store/ModelConfiguration.h"

namespace quorvane::StoreFile {

enum class State { missing, empty, store };

/// Looks at the file without changing it or anything beside it. What must not be opened is refused with `StoreError`:
/// no file, no rights, no database, not ours, newer, cut short, read-only where it is to be written.
[[nodiscard]] State inspect(const ModelConfiguration& configuration);

/// Makes the file, empty, and the folders that lead to it, for the user alone. Throws `StoreError`.
void make(const std::filesystem::path& file);

/// Do changes wait in the log beside the file, because a program uses it or ended without closing it?
[[nodiscard]] bool hasPendingLog(const std::filesystem::path& file);

/// May files be made and removed in the folder of the file?
[[nodiscard]] bool isFolderWritable(const std::filesystem::path& file);

}  // namespace quorvane::StoreFile
