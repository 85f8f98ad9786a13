#pragma once

#include "capture/FrontWindowTitle.h"
#include "platform/Clock.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "store/AppSettings.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"
#include "tracking/ActivityTracker.h"

#include <memory>

namespace quorvane {

/// One day of one user in simulated time, from 08:00 on Wednesday, 4 March 2026: a desktop to act on, with an editor
/// in front, a tracker on a real store, and what both leave behind.
class SimulatedDayTest : public testing::Test {
protected:
    SimulatedDayTest();
    ~SimulatedDayTest() override;

    /// Plays until then, hands the store over and starts tracking.
    void startTrackingAt(std::string_view time);
    void playUntil(std::string_view time) { runLoop.playUntil(time); }

    /// Stores the row that the settings screen would.
    std::shared_ptr<AppSettings> saveSettings(const std::function<void(AppSettings&)>& change);

    /// All records of the store, oldest first, as another program sees them: "Editor 09:00:00.5 to 09:40:00", and while
    /// one is open "Editor 09:00:00.5". The times are those of the day in the process's zone.
    std::vector<std::string> records();
    std::vector<std::shared_ptr<ActivityRecord>> storedRecords();

    /// The lines of the console since the last call, without the tracker's periodic tick line and the tracker's name.
    std::vector<std::string> newLines(bool ofTheTrackerAlone = false);
    std::vector<std::string> trackerLines() { return newLines(true); }
    void forgetLines() { newLines(); }

    [[nodiscard]] std::string timeText(Date date) const;

    platform::SimulatedRunLoop runLoop{dateFromSecondsSince1970(1'772'611'200)};  // 2026-03-04T08:00:00Z
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::SimulatedDesktop desktop{runLoop};
    RecordingConsole console;
    TemporaryStore store;
    FrontWindowTitle windowInfo{desktop.foreground()};
    KeyboardMonitor keyboard{runLoop, desktop.keys(), desktop.settingsPanes(), console};
    MouseMonitor mouse{runLoop, desktop.pointer(), console};
    std::unique_ptr<ActivityTracker> tracker;

private:
    std::vector<std::unique_ptr<ModelContext>> readers_;  ///< records reach their projects while these live
    std::size_t linesSeen_ = 0;
};

}  // namespace quorvane
