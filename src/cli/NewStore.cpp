#include "cli/NewStore.h"

#include "base/Uuid.h"

#include <cerrno>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::cli {

NewStore::NewStore(std::filesystem::path place)
    : place_(std::move(place)), file_(place_.string() + "." + Uuid::random().string().substr(0, 8)) {
    try {
        database_ = openStore(file_, StoreAccess::write);
    } catch (const CommandError& error) {
        removeFiles();
        throw CommandError(error.status(), named(error.what()));
    }
}

NewStore::~NewStore() {
    database_.reset();
    removeFiles();
}

void NewStore::removeFiles() const {
    std::error_code ignored;
    for (const char* ending : {"", "-wal", "-shm"})
        std::filesystem::remove(file_.string() + ending, ignored);
}

void NewStore::takePlace() {
    // What is still in the log has to come along.
    database_->execute("PRAGMA wal_checkpoint(TRUNCATE)");
    database_.reset();
    // A link and not a renaming: it takes no place that is taken.
    if (::link(file_.c_str(), place_.c_str()) != 0)
        throw CommandError(ExitStatus::failed,
                           fmt::format("{}: {}", place_.string(), std::generic_category().message(errno)));
}

std::string NewStore::named(std::string message) const {
    const std::string temporary = file_.string();
    for (auto at = message.find(temporary); at != std::string::npos; at = message.find(temporary))
        message.replace(at, temporary.size(), place_.string());
    return message;
}

}  // namespace quorvane::cli
