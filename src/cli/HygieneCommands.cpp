#include "base/Calendar.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/RowChanges.h"
#include "cli/ServiceConsole.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/process/ProcessLock.h"
#include "session/TrackerLock.h"
#include "store/DataCleanupService.h"
#include "store/OverlapDetectionService.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

/// Lets a service begin its work, waits for the end of it and prints what became of the records. While somebody tracks
/// into the store, the open record is theirs.
template <class MakeAndBegin>
void runToTheEnd(const CommandContext& context, const MakeAndBegin& makeAndBegin) {
    platform::QtRunLoop runLoop;
    ServiceConsole console;
    ModelContext store(context.open(StoreAccess::write));
    const bool isTracked = platform::ProcessLock::isHeld(trackerLockFile(context.storeFile()));
    const LiveRecord liveRecord = [&store, isTracked] { return isTracked ? newestOpenRecord(store) : std::nullopt; };
    const RowChanges changes = rowChanges(context.storeFile(), store, ActivityRecord::description(), [&] {
        const auto service = makeAndBegin(store, runLoop, console, liveRecord);
        runLoop.runPosted();
        console.finish();
    });
    Output output;
    output.write(fmt::format("{{\"deleted\":{},\"changed\":{}}}\n", changes.deleted, changes.changed));
    output.finish();
}

void cleanUp(const CommandContext& context, bool isSynchronous) {
    runToTheEnd(context, [&](auto& store, auto& runLoop, auto& console, const LiveRecord& liveRecord) {
        auto service = std::make_unique<DataCleanupService>(store, runLoop, console, liveRecord);
        if (isSynchronous)
            service->performSynchronousCleanup();
        else
            service->performBackgroundCleanup();
        return service;
    });
}

void resolveOverlaps(const CommandContext& context, const std::optional<CivilDate>& day) {
    runToTheEnd(context, [&](auto& store, auto& runLoop, auto& console, const LiveRecord& liveRecord) {
        auto service =
            std::make_unique<OverlapDetectionService>(store, runLoop, console, RecordSpans::sliceSize, liveRecord);
        if (day)
            service->detectAndResolveOverlaps(Calendar::current().date(*day));
        else
            service->detectAndResolveOverlaps();
        return service;
    });
}

}  // namespace

void addCleanupCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("cleanup", "Remove what automatic tracking leaves behind");
    const auto isSynchronous = std::make_shared<bool>(false);
    command->add_flag("--synchronous", *isSynchronous, "The whole store, not the last 14 days; short records stay");
    command->callback([&context, isSynchronous] {
        context.command = [&context, isSynchronous] { cleanUp(context, *isSynchronous); };
    });
}

void addOverlapsCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("overlaps", "Find groups of records that overlap, and mend them");
    const auto day = std::make_shared<std::optional<CivilDate>>();
    addDateOption(*command, "--date", *day, "Only records that touch this day");
    command->callback([&context, day] { context.command = [&context, day] { resolveOverlaps(context, *day); }; });
}

}  // namespace quorvane::cli
