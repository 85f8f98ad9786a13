#include "cli/CommandContext.h"

#include "platform/linux/XdgPaths.h"

#include <system_error>

namespace quorvane::cli {

std::unique_ptr<Database> openStore(const std::filesystem::path& file, StoreAccess access) {
    std::error_code unreachable;
    const bool isThere = std::filesystem::exists(file, unreachable);
    const bool allowsSave = access == StoreAccess::write || (access == StoreAccess::change && isThere);
    try {
        return std::make_unique<Database>(
            ModelConfiguration{.file = file, .allowsSave = allowsSave, .cloudDatabase = CloudDatabase::none});
    } catch (const StoreError& error) {
        const bool isMissing = error.code() == StoreError::Code::missing && access != StoreAccess::write;
        throw CommandError(isMissing ? ExitStatus::failed : ExitStatus::storeUnavailable, error.what());
    }
}

std::filesystem::path CommandContext::storeFile() const {
    return store ? std::filesystem::path(*store) : platform::XdgPaths::applicationData() / "quorvane.sqlite";
}

}  // namespace quorvane::cli
