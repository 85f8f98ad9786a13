#pragma once

#include "store/ModelConfiguration.h"

namespace quorvane::StoreFile {

enum class State { missing, empty, store };

/// Looks at the file without changing it or anything beside it. What must not be opened is refused with `StoreError`:
/// no file, no rights, no database, not ours, newer, cut short, read-only where it is to be written.
[[nodiscard]] State inspect(const ModelConfiguration& configuration);

/// Makes the folders of the file, for the user alone. Throws `StoreError`.
void makeFolder(const std::filesystem::path& file);

/// Makes the file, still empty, for the user alone. Throws `StoreError`.
void make(const std::filesystem::path& file);

/// While it lives, other programs wait before they open a store in the same folder for writing: one of them makes a new
/// store and the others find it whole. Where a folder can't be locked it does nothing.
class OpeningLock {
public:
    explicit OpeningLock(const std::filesystem::path& file);
    OpeningLock(const OpeningLock&) = delete;
    OpeningLock& operator=(const OpeningLock&) = delete;
    ~OpeningLock();

private:
    int folder_;
};

/// Do changes wait in the log beside the file, because a program uses it or ended without closing it?
[[nodiscard]] bool hasPendingLog(const std::filesystem::path& file);

/// May the file be written, and files be made and removed beside it?
[[nodiscard]] bool isWritable(const std::filesystem::path& file);

/// May files be made and removed in the folder of the file?
[[nodiscard]] bool isFolderWritable(const std::filesystem::path& file);

}  // namespace quorvane::StoreFile
