#pragma once

#include "capture/PermissionChecker.h"
#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "session/TrackingSession.h"
#include "support/Builders.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

namespace quorvane {

/// A tracker over a store on a simulated desktop at nine o'clock, which nobody has started.
struct TrackedScene {
    TemporaryStore store;
    platform::SimulatedRunLoop runLoop{at("09:00:00")};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::SimulatedDesktop desktop{runLoop};
    platform::InMemoryUserDefaults defaults;
    RecordingConsole console;
    TrackingSession session{runLoop, desktop, store.context(), defaults, console};
    PermissionChecker permissions{PermissionChecker::Sources{
        runLoop, desktop.accessibility(), desktop.automation(), desktop.keys(), desktop.settingsPanes(),
        desktop.runningApplications(), session.browserURLs(), session.documents(), console}};
};

}  // namespace quorvane
