#pragma once

#include "diagnostics/AppLogger.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RecordContainer.h"
#include "platform/linux/bus/DBusConnection.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/system/IniUserDefaults.h"
#include "shell/app/AppServices.h"
#include "shell/app/MainWindows.h"
#include "shell/app/SelfDiagnostics.h"
#include "shell/app/SingleInstance.h"
#include "shell/state/LaunchTask.h"
#include "shell/state/QuorvaneAppDelegate.h"

#include <memory>

namespace quorvane {

/// The application: opens the store, tracks, and keeps a window and an item in the tray. Closing the window ends
/// neither of the other two. Main thread only.
class QuorvaneApp {
public:
    /// All of it outlives the application.
    struct Parts {
        platform::QtRunLoop& runLoop;
        platform::DBusConnection& sessionBus;
        SingleInstance& singleInstance;
        AppLogger& logger;
        ConsoleSink& console;
        ApplicationInfo application{};
        MainWindowFactory makeMainWindow{};
        /// For builds that name a host; not called by others.
        std::function<std::unique_ptr<platform::HttpClient>()> makeHttpClient{};
        /// Of this machine; empty: the cloud is unavailable.
        platform::CloudService cloud{};
        LaunchHooks hooks{};
    };

    /// Opens the shared store and starts updater and watchdog, in this order.
    explicit QuorvaneApp(Parts parts);
    QuorvaneApp(const QuorvaneApp&) = delete;
    QuorvaneApp& operator=(const QuorvaneApp&) = delete;
    /// Ends the tracking, if that was not done yet. A worker that still runs after two seconds ends with the process.
    ~QuorvaneApp();

    /// Shows the window or, as login item, only tracks; serves events until somebody quits. Then the open record ends
    /// at the last sign of life and is saved. The exit status.
    int run(bool isInBackground);

    /// The same end when the process is made to exit at once, as Qt does when the X server goes.
    void endTracking();

private:
    struct Scene;

    Scene& scene();
    void setHooks();
    void startInBackground();
    void openMainWindow();
    void openWindow();
    void showAbout();
    void performAction(const std::string& action);
    platform::ApplicationRemote::Recording setRecording(bool isOn);
    [[nodiscard]] std::string hindrance();

    Parts parts_;
    QuorvaneAppDelegate appDelegate_;
    ModelContainer& container_;
    platform::IniUserDefaults defaults_;
    ZelkorUpdateController updates_;
    Localization localization_ = Localization::fromEnvironment();
    MainWindows windows_;
    SelfDiagnostics diagnostics_;
    std::unique_ptr<Scene> scene_;  ///< made with the first content
    int status_ = 0;
    bool hasEnded_ = false;
    std::vector<Subscription> subscriptions_;
};

}  // namespace quorvane
