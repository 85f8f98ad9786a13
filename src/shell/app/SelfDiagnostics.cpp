#include "shell/app/SelfDiagnostics.h"

#include "base/Calendar.h"
#include "base/Deployment.h"
#include "platform/linux/loop/ThreadSerialQueue.h"
#include "platform/linux/system/LinuxSystemInfo.h"
#include "platform/linux/system/XdgPaths.h"

#include <QGuiApplication>

namespace quorvane {
namespace {

PerformanceReporting::Surroundings surroundings(const SelfDiagnostics::Parts& parts) {
    return {.hasWindow = parts.hasVisibleWindows(),
            .isActive = QGuiApplication::applicationState() == Qt::ApplicationActive,
            .preferredLocalizations = {parts.language},
            .currentLocale = Calendar::current().localeName()};
}

}  // namespace

SelfDiagnostics::SelfDiagnostics(const Parts& parts)
    : reporting_({.runLoop = parts.runLoop,
                  .logger = parts.logger,
                  .defaults = parts.defaults,
                  .usage = usage_,
                  .sampler = sampler_,
                  .makeQueue =
                      [](std::string label) { return std::make_unique<platform::ThreadSerialQueue>(std::move(label)); },
                  .makeHttpClient = parts.makeHttpClient,
                  .surroundings = [parts] { return surroundings(parts); },
                  .application = parts.application,
                  .system = platform::linuxSystemInfo(),
                  .homeDirectory = platform::XdgPaths::home(),
                  .spoolDirectory = platform::XdgPaths::applicationState() / "perf-reports",
                  .telemetryHost = std::string(deployment().telemetryHost)}),
      memory_(parts.runLoop, memoryLog_, usage_) {}

}  // namespace quorvane
