// A program that works too hard and is watched: hot_loop FOLDER HOST. FOLDER has the file ca.pem with an authority to
// trust, takes the spool and the program's log, and counts as the user's home. It runs until it is killed.

#include "diagnostics/performance/PerformanceReporting.h"
#include "platform/Clock.h"
#include "platform/linux/http/QtHttpClient.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/ThreadSerialQueue.h"
#include "platform/linux/process/EuStackSampler.h"
#include "platform/linux/process/LinuxProcessUsage.h"
#include "platform/linux/system/LinuxSystemInfo.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "support/TemporaryFolder.h"

#include <cstdio>

namespace quorvane {

/// Nearly all of a core, and of another thread's turns nothing.
__attribute__((noinline)) void unmistakableHotLoop() {
    const auto end = platform::uptime() + 0.1s;
    while (platform::uptime() < end) {
    }
}

int watchHotLoop(const std::filesystem::path& folder, const std::string& host) {
    platform::QtRunLoop loop;
    platform::RecordingSystemLog systemLog;
    StreamConsole console(std::fopen((folder / "log").c_str(), "w"));
    AppLogger logger(loop, systemLog, console, {});
    platform::InMemoryUserDefaults defaults;
    PerformanceReportPreferences(defaults).setEnabled(true);
    const platform::LinuxProcessUsage usage;
    platform::EuStackSampler sampler;
    PerformanceReporting reporting({
        .runLoop = loop,
        .logger = logger,
        .defaults = defaults,
        .usage = usage,
        .sampler = sampler,
        .makeQueue = [](std::string label) { return std::make_unique<platform::ThreadSerialQueue>(std::move(label)); },
        .makeHttpClient =
            [&] { return std::make_unique<platform::QtHttpClient>("Quorvane", contentOf(folder / "ca.pem")); },
        .surroundings = [] { return PerformanceReporting::Surroundings{.currentLocale = "en_US"}; },
        .application = {.shortVersion = "1.2.0", .build = "345"},
        .system = platform::linuxSystemInfo(),
        .homeDirectory = folder,
        .spoolDirectory = folder / "spool",
        .telemetryHost = host,
        .policy = {.sampleInterval = 0.2s, .sustainedSeconds = 0.4s, .launchGrace = 0s},
    });
    reporting.startWatchdog();
    // After a quiet time in which the watchdog has gone to rest.
    std::unique_ptr<platform::Timer> timer;
    const auto begin = loop.after(3s, [&] { timer = loop.every(0.11s, unmistakableHotLoop); });
    return loop.run();
}

}  // namespace quorvane

int main(int, char** argv) {
    return quorvane::watchHotLoop(argv[1], argv[2]);
}
