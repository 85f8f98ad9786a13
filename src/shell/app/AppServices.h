#pragma once

#include "base/Signal.h"
#include "capture/PermissionChecker.h"
#include "cloud/CloudKitSyncService.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/ApplicationInfo.h"
#include "diagnostics/ConsoleSink.h"
#include "diagnostics/PerformanceReportPreferences.h"
#include "l10n/Localization.h"
#include "platform/ApplicationIcons.h"
#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"
#include "praise/RandomIndex.h"
#include "rules/CategoryTagManager.h"
#include "shell/state/AutoStartManager.h"
#include "shell/state/CaptureHealthView.h"
#include "shell/state/MenuBarContentView.h"
#include "store/ModelContainer.h"
#include "tracking/ActivityTracker.h"
#include "updates/ZelkorUpdateController.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace quorvane {

/// What the application lends to its window. All of it outlives every window. Main thread only.
struct AppServices {
    ModelContainer& container;  ///< for contexts of background work
    ModelContext& context;      ///< the main one
    ActivityTracker& tracker;
    CategoryTagManager& categories;
    PermissionChecker& permissionChecker;
    CaptureHealthView& captureHealth;
    MenuBarContentView& menuBar;
    AutoStartManager& autoStartManager;
    platform::UserDefaults& defaults;
    const PerformanceReportPreferences& performanceReports;
    const platform::ApplicationIcons& applicationIcons;
    ZelkorUpdateController& updates;
    CloudKitSyncService& cloudKitSyncService;
    const Localization& localization;
    const ApplicationInfo& application;
    ConsoleSink& console;
    AppLogger& logger;
    platform::RunLoop& runLoop;

    /// Chooses what is left to chance: which sentence is shown.
    RandomWords randomWords = secureRandomWord;

    /// Ends the application, whatever is open.
    std::function<void()> quit;
    /// Gives the system back what memory has become free, in the loop's next turn.
    std::function<void()> returnMemory;
    /// Is there a place for the tray icon? Also true while that is still being found out, in the first seconds.
    std::function<bool()> hasTray;
    Signal<>& hasTrayChanged;
    /// The Dock setting: leaves the application's windows out of taskbar and pager, or shows them there again; then
    /// `activate` brings them to the front.
    std::function<void(bool hide, bool activate)> setHideDockIcon;
    /// Switches performance reports on or off, at once. Empty in a build without a host for them: it has no switch.
    std::function<void(bool isEnabled)> setPerformanceReportsEnabled;
    /// Sent when the about screen is asked for elsewhere (tray); the window is in front by then.
    Signal<>& aboutRequested;
};

/// Makes a main window. It runs the tasks of its `ContentView` once it is on screen. The application shows it, brings
/// it to the front and deletes it when it has been closed.
using MainWindowFactory = std::function<std::unique_ptr<QWidget>(AppServices& services)>;

}  // namespace quorvane
