#include "session/TrackerLock.h"

#include <system_error>

namespace quorvane {

std::filesystem::path trackerLockFile(const std::filesystem::path& store) {
    std::error_code error;
    // However the store is spelled, it is one store.
    auto file = std::filesystem::weakly_canonical(store, error);
    if (error) file = store;
    return file += ".lock";
}

}  // namespace quorvane
