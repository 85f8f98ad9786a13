#pragma once

#include "capture/FrontWindowTitle.h"
#include "platform/Clock.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "store/AppSettings.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"
#include "tracking/ActivityTracker.h"

#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// A record as a day's list shows it, times of the day in the process's zone: "09:00:00.5".
struct Seen {
    std::string appName;
    std::string start;
    std::string end;  ///< "" while open
    friend bool operator==(const Seen&, const Seen&) = default;
    friend void PrintTo(const Seen& seen, std::ostream* out) {
        *out << seen.appName << ' ' << seen.start << " - " << seen.end;
    }
};

/// One day of one user in simulated time, from 08:00 on Wednesday, 4 March 2026: a desktop to act on, a tracker on a
/// real store, and what both leave behind.
class SimulatedDayTest : public testing::Test {
protected:
    SimulatedDayTest();
    ~SimulatedDayTest() override;

    /// Plays until then, hands the store over and starts tracking.
    void startTrackingAt(std::string_view time);
    void playUntil(std::string_view time) { runLoop.playUntil(time); }

    /// Stores the row that the settings screen would.
    std::shared_ptr<AppSettings> saveSettings(const std::function<void(AppSettings&)>& change);

    /// All records of the store, oldest first, as another program sees them.
    std::vector<Seen> records();
    std::vector<std::shared_ptr<ActivityRecord>> storedRecords();

    /// The lines of the console since the last call, without the tracker's periodic tick line.
    std::vector<std::string> newLines();
    void forgetLines() { newLines(); }

    /// The lines of one service among them.
    static std::vector<std::string> from(const std::string& service, const std::vector<std::string>& lines);

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
