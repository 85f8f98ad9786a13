#include "store/StoreBackup.h"

#include "store/Database.h"
#include "store/StoreFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace quorvane::StoreBackup {
namespace {

std::filesystem::path freeName(const std::filesystem::path& file) {
    for (int number = 1;; ++number) {
        std::filesystem::path name = fmt::format("{}.backup-{}", file.string(), number);
        if (!std::filesystem::exists(name)) return name;
    }
}

/// SQLite doesn't wait for the disk when it writes such a copy.
bool reachesDisk(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool isThere = ::fsync(descriptor) == 0;
    return ::close(descriptor) == 0 && isThere;
}

}  // namespace

std::filesystem::path make(Database& database, const std::filesystem::path& file) {
    const std::filesystem::path unfinished = file.string() + ".backup.new";
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);  // of a run that was killed
    try {
        StoreFile::make(unfinished);
        database.execute("VACUUM INTO ?", {unfinished.string()});
        auto backup = freeName(file);
        if (!reachesDisk(unfinished) || ::rename(unfinished.c_str(), backup.c_str()) != 0)
            throw StoreError(errno == ENOSPC ? StoreError::Code::diskFull : StoreError::Code::failed,
                             fmt::format("{}: {}", unfinished.string(), std::strerror(errno)));
        return backup;
    } catch (const StoreError& error) {
        std::filesystem::remove(unfinished, ignored);
        throw StoreError(error.code(), fmt::format("{} (its backup before an update could not be made)", error.what()));
    }
}

}  // namespace quorvane::StoreBackup
