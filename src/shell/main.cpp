#include "diagnostics/AppLogger.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/linux/IniUserDefaults.h"
#include "platform/linux/LinuxDesktop.h"
#include "platform/linux/LinuxSystemLog.h"
#include "platform/linux/ProcessLock.h"
#include "platform/linux/QtRunLoop.h"
#include "platform/linux/UnixSignals.h"
#include "platform/linux/XdgPaths.h"
#include "session/RecordAnnouncer.h"
#include "session/TrackerLock.h"
#include "session/TrackingSession.h"
#include "store/SafeModelContainer.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;
constexpr int storeUnavailable = 3;

int refuse(int status, const std::string& reason) {
    fmt::print(stderr, "quorvane: {}\n", reason);
    return status;
}

/// The store, opened by every means; a process that gets none has nothing to do and ends.
ModelContainer& openStore(const std::filesystem::path& file, AppLogger& logger) {
    SafeModelContainer::configure(
        {.file = file, .logger = &logger, .open = {}, .fatal = [](const std::string& message) {
             fmt::print(stderr, "{}\n", message);
             std::exit(storeUnavailable);
         }});
    return SafeModelContainer::sharedContainer();
}

/// Tracks until a signal ends it.
int track(platform::QtRunLoop& runLoop, ModelContext& store, ConsoleSink& console) {
    platform::LinuxDesktop desktop(runLoop);
    for (const std::string& notice : desktop.notices())
        console.write(notice);
    const RecordAnnouncer announcer(store, [&](const std::string& line) { console.write(line); });
    desktop.listenToBrowsers([&](const std::string& line) { console.write(line); });
    platform::IniUserDefaults defaults;
    TrackingSession session(runLoop, desktop, store, defaults, console);
    const platform::UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, [&](int) { runLoop.quit(); });
    session.start();
    runLoop.run();
    const bool isSaved = session.stop();
    runLoop.finishBackground();
    return isSaved ? EXIT_SUCCESS : failed;
}

int run() {
    // Nobody has to read along: lines that can't be written are lost, the time is not.
    std::signal(SIGPIPE, SIG_IGN);
    const auto folder = platform::XdgPaths::applicationData();
    if (!platform::XdgPaths::createPrivately(folder))
        return refuse(storeUnavailable, fmt::format("the folder {} can't be made", folder.string()));
    const auto file = folder / "quorvane.sqlite";
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(file), "quorvane");
    if (const auto* refusal = std::get_if<platform::ProcessLock::Refusal>(&lock))
        return refuse(failed, refusal->holder ? refusal->holder->description() + " tracks already" : refusal->reason);

    StreamConsole console(stdout);
    platform::QtRunLoop runLoop;
    platform::LinuxSystemLog systemLog;
    AppLogger logger(runLoop, systemLog, console, {.shortVersion = QUORVANE_VERSION, .build = {}});
    AppLogger::setShared(&logger);
    const int status = track(runLoop, openStore(file, logger).mainContext(), console);
    SafeModelContainer::reset();
    AppLogger::setShared(nullptr);
    return status;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char**) {
    if (argc > 1)
        return quorvane::refuse(quorvane::wrongUsage,
                                "takes no arguments; quorvane-cli is the program for the command line");
    return quorvane::run();
}
