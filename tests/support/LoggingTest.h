#pragma once

#include "diagnostics/AppLogger.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

namespace quorvane {

/// What logs, in simulated time; a test reads its lines on the console.
class LoggingTest : public testing::Test {
protected:
    explicit LoggingTest(std::string_view now = "2026-03-02T09:00:00Z", const ApplicationInfo& application = {})
        : loop(at(now)), logger(loop, systemLog, console, application) {}

    platform::SimulatedRunLoop loop;
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger;
};

}  // namespace quorvane
