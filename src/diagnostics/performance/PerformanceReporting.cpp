#include "diagnostics/performance/PerformanceReporting.h"

namespace quorvane {

PerformanceReporting::PerformanceReporting(const Parts& parts)
    : canReport_(!parts.telemetryHost.empty()),
      uploader_({.runLoop = parts.runLoop,
                 .logger = parts.logger,
                 .queue = parts.makeQueue("quorvane-reports"),
                 .makeTransport = parts.makeHttpClient,
                 .spoolDirectory = parts.spoolDirectory,
                 .host = parts.telemetryHost,
                 .userAgent = PerformanceReportEnvironment::userAgent(parts.application, parts.system)}),
      watchdog_({.runLoop = parts.runLoop,
                 .logger = parts.logger,
                 .defaults = parts.defaults,
                 .usage = parts.usage,
                 .sampler = parts.sampler,
                 .uploader = uploader_,
                 .queue = parts.makeQueue(PerformanceWatchdog::queueLabel),
                 .captureQueue = parts.makeQueue("quorvane-stacks"),
                 .application = parts.application,
                 .system = parts.system,
                 .homeDirectory = parts.homeDirectory,
                 .surroundings = parts.surroundings,
                 .policy = parts.policy}) {}

void PerformanceReporting::startWatchdog() {
    if (canReport_)
        watchdog_.start();
    else
        uploader_.discardPending();  // what a build that had a host has left
}

}  // namespace quorvane
