#pragma once

#include <filesystem>

namespace quorvane {

class Database;

namespace StoreBackup {

/// Copies the store as the connection sees it into a new file beside it, "store.sqlite.backup-1" or the next number
/// that is free, for the user alone. The copy is whole or isn't there. Returns its path; throws `StoreError`.
std::filesystem::path make(Database& database, const std::filesystem::path& file);

}  // namespace StoreBackup
}  // namespace quorvane
