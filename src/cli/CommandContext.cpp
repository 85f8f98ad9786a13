#include "cli/CommandContext.h"

#include "platform/linux/XdgPaths.h"

namespace quorvane::cli {
namespace {

std::unique_ptr<Database> open(const std::filesystem::path& file, bool allowsSave) {
    try {
        return std::make_unique<Database>(
            ModelConfiguration{.file = file, .allowsSave = allowsSave, .cloudDatabase = CloudDatabase::none});
    } catch (const StoreError& error) {
        const bool isMissing = error.code() == StoreError::Code::missing;
        throw CommandError(isMissing ? ExitStatus::failed : ExitStatus::storeUnavailable, error.what());
    }
}

}  // namespace

std::filesystem::path CommandContext::storeFile() const {
    return store ? std::filesystem::path(*store) : platform::XdgPaths::applicationData() / "quorvane.sqlite";
}

std::unique_ptr<Database> CommandContext::openForReading() const {
    return open(storeFile(), false);
}

std::unique_ptr<Database> CommandContext::openForWriting() const {
    return open(storeFile(), true);
}

}  // namespace quorvane::cli
