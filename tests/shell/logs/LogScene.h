#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Builders.h"
#include "support/RecordingConsole.h"

namespace quorvane {

/// A log at nine o'clock with the line of its start.
struct LogScene {
    LogScene() { runLoop.runPosted(); }

    platform::SimulatedRunLoop runLoop{at("09:00:00")};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger{runLoop, systemLog, console, {.shortVersion = "1.0.0", .build = "1"}};
    Localization localization{"en"};
};

}  // namespace quorvane
