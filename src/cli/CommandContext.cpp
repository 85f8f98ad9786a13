#include "cli/CommandContext.h"

#include "platform/linux/system/XdgPaths.h"

#include <fmt/format.h>
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

std::unique_ptr<Database> CommandContext::open(StoreAccess access) const {
    const auto file = storeFile();
    std::error_code unreachable;
    if (!store && access != StoreAccess::write &&
        std::filesystem::symlink_status(file, unreachable).type() == std::filesystem::file_type::not_found)
        throw CommandError(ExitStatus::failed,
                           fmt::format("nothing is recorded yet: Quorvane has not been started, and "
                                       "there is no store {}",
                                       file.string()));
    return openStore(file, access);
}

}  // namespace quorvane::cli
