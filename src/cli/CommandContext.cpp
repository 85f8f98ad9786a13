#include "cli/CommandContext.h"

#include "platform/linux/XdgPaths.h"

namespace quorvane::cli {

std::unique_ptr<Database> openStore(const std::filesystem::path& file, StoreAccess access) {
    try {
        return std::make_unique<Database>(ModelConfiguration{
            .file = file, .allowsSave = access == StoreAccess::write, .cloudDatabase = CloudDatabase::none});
    } catch (const StoreError& error) {
        const bool isMissing = error.code() == StoreError::Code::missing && access == StoreAccess::read;
        throw CommandError(isMissing ? ExitStatus::failed : ExitStatus::storeUnavailable, error.what());
    }
}

std::filesystem::path CommandContext::storeFile() const {
    return store ? std::filesystem::path(*store) : platform::XdgPaths::applicationData() / "quorvane.sqlite";
}

}  // namespace quorvane::cli
