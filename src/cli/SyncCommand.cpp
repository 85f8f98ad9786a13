#include "base/Json.h"
#include "cli/CloudService.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "cli/ServiceConsole.h"
#include "cloud/CloudKitSyncService.h"
#include "cloud/module/CloudModule.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

/// The cloud of this machine; nothing has been opened when there is none.
std::unique_ptr<platform::RecordContainer> cloudContainer() {
    const auto cloud = CloudModule::cloudService();
    if (!cloud.isConfigured()) {
        const CloudKitSyncError error(CloudKitSyncError::Code::notAvailable, {},
                                      missingServiceReason(CloudModule::serviceName));
        throw CommandError(ExitStatus::failed, reasonOf(error));
    }
    return cloud.makeContainer();
}

/// Runs one sync to its end and says how far it came. Throws `CommandError` if it failed.
SyncProgress syncOnce(std::unique_ptr<platform::RecordContainer> container, ModelContext& store) {
    platform::QtRunLoop runLoop;
    ServiceConsole console;
    const auto localization = Localization::fromEnvironment();
    CloudKitSyncService service(runLoop, console, localization, std::move(container));
    Progress shown("records");
    const auto changed = service.changed.subscribe([&] {
        const SyncProgress& progress = service.progress();
        shown.show(progress.uploaded + progress.downloaded);
    });
    std::optional<CloudKitSyncError> failure;
    runUntilFinished(runLoop, [&](const std::function<void()>& finish) {
        service.performFullSync(store, [&failure, finish](const auto& error) {
            failure = error;
            finish();
        });
    });
    console.finish();
    if (failure) throw CommandError(ExitStatus::failed, reasonOf(*failure));
    return service.progress();
}

void sync(const CommandContext& context) {
    auto container = cloudContainer();
    ModelContext store(context.open(StoreAccess::write));
    const SyncProgress progress = syncOnce(std::move(container), store);
    if (context.json) {
        Output output;
        output.write(jsonText({{"to_upload", progress.toUpload},
                               {"uploaded", progress.uploaded - progress.refused},
                               {"refused", progress.refused},
                               {"downloaded", progress.downloaded},
                               {"unreadable", progress.unreadable}}) +
                     "\n");
        output.finish();
    }
    if (progress.refused > 0)
        throw CommandError(ExitStatus::failed, fmt::format("{} of {} records were not saved; the lines above name them",
                                                           progress.refused, progress.uploaded));
    if (progress.unreadable > 0)
        throw CommandError(
            ExitStatus::failed,
            fmt::format("{} rows of the cloud can't be read; the lines above name them", progress.unreadable));
}

}  // namespace

void addSyncCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("sync", "Sync the records with the cloud, once");
    command->callback([&context] { context.command = [&context] { sync(context); }; });
}

}  // namespace quorvane::cli
