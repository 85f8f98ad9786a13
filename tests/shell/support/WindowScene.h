#pragma once

#include "capture/PermissionChecker.h"
#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedHttpClient.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRecordContainer.h"
#include "session/TrackingSession.h"
#include "shell/app/AppServices.h"
#include "shell/window/MainWindow.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace quorvane {

/// A main window in simulated time over a real store, with a desktop that a script plays. Needs a `QApplication`.
class WindowScene {
public:
    static constexpr const char* feedHost = "updates.example.org";

    /// Begins on Thursday, 12 March 2026, at 16:48:59.5, with the sample days or with nothing.
    /// With a key there is a feed of versions on `feedHost` that has to be signed with it.
    explicit WindowScene(std::string_view language = "en", bool isEmpty = false, const std::string& feedKey = {},
                         bool hasCloud = true);

    /// Opens the window in this size, or in its own where none is given; the tracker starts with it.
    MainWindow& open(QSize size = {});
    /// As the program's end does, whatever is open.
    void endWindow() { window_.reset(); }
    /// A terminal is used until then, "16:58:00".
    void workUntil(std::string_view time);
    /// Lets everything that is due now happen, in Qt and in the simulation.
    void settle();

    [[nodiscard]] AppServices& services() { return services_; }
    [[nodiscard]] platform::SimulatedLoginItem& loginItem() { return loginItem_; }
    [[nodiscard]] MainWindow& window() { return *window_; }
    [[nodiscard]] DayTimelineChart& chart() { return window_->activity().chart(); }

    platform::SimulatedRunLoop runLoop;
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::SimulatedDesktop desktop{runLoop};
    TemporaryStore store;
    platform::InMemoryUserDefaults defaults;
    RecordingConsole console;
    platform::SimulatedHttpClient::Network network;
    platform::SimulatedCloud cloud;
    bool hasTray = true;
    bool hasQuit = false;

private:
    platform::RecordingSystemLog systemLog_;
    ApplicationInfo application_{.shortVersion = "1.0.0", .build = "1"};
    AppLogger logger_;
    Localization localization_;
    TrackingSession session_;
    ZelkorUpdateController updates_;
    PermissionChecker permissions_;
    CaptureHealthView captureHealth_;
    MenuBarContentView menuBar_;
    platform::SimulatedLoginItem loginItem_;
    AutoStartManager autoStart_;
    CloudKitSyncService cloudKitSyncService_;
    PerformanceReportPreferences performanceReports_{defaults};
    std::uint64_t words_ = 0;
    Signal<> hasTrayChanged_;
    Signal<> aboutRequested_;
    AppServices services_;
    std::unique_ptr<MainWindow> window_;
};

}  // namespace quorvane
