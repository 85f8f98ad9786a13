// What the watchdog costs while nothing happens: processor time and wake-ups of a process that has nothing else to do.
// Usage: watchdog_rest [SECONDS]   It may be 0.02 % of a core and a wake-up a minute. Nothing is captured or sent.

#include "diagnostics/performance/PerformanceReporting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/ThreadSerialQueue.h"
#include "platform/linux/process/EuStackSampler.h"
#include "platform/linux/process/LinuxProcessUsage.h"
#include "platform/linux/system/LinuxSystemInfo.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/RecordingSystemLog.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <fmt/format.h>
#include <sys/resource.h>

namespace quorvane {
namespace {

constexpr double mostPercent = 0.02;
constexpr double mostWakeUps = 1;  // a minute; the two timers of the measurement are among them
constexpr Seconds warmUp = 10s;    // the start, and the ticks until the watchdog rests, are not what is measured

/// How often a thread of this process has waited.
long waits() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_nvcsw;
}

int measure(int seconds) {
    platform::QtRunLoop loop;
    platform::RecordingSystemLog systemLog;
    StreamConsole console(stdout);
    AppLogger logger(loop, systemLog, console, {});
    platform::InMemoryUserDefaults defaults;
    const platform::LinuxProcessUsage usage;
    platform::EuStackSampler sampler;
    PerformanceReporting reporting({
        .runLoop = loop,
        .logger = logger,
        .defaults = defaults,
        .usage = usage,
        .sampler = sampler,
        .makeQueue = [](std::string label) { return std::make_unique<platform::ThreadSerialQueue>(std::move(label)); },
        .system = platform::linuxSystemInfo(),
    });
    reporting.startWatchdog();
    double cpuSeconds = 0;
    long waited = 0;
    const auto begin = loop.after(warmUp, [&] {
        cpuSeconds = usage.cpuSeconds();
        waited = waits();
    });
    const auto end = loop.after(warmUp + Seconds(seconds), [&] { loop.quit(); });
    loop.run();
    const double percent = (usage.cpuSeconds() - cpuSeconds) / seconds * 100;
    const double wakeUps = static_cast<double>(waits() - waited) * 60 / seconds;
    fmt::print("the watchdog at rest, {} s: {:.4f} % of a core (may be {}), {:.2f} wake-ups a minute (may be {})\n",
               seconds, percent, mostPercent, wakeUps, mostWakeUps);
    return percent <= mostPercent && wakeUps <= mostWakeUps ? 0 : 1;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    int seconds = 120;
    if (argc > 1) std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), seconds);
    return quorvane::measure(seconds > 0 ? seconds : 120);
}
