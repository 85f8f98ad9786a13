#include "shell/app/QuorvaneApp.h"

#include "base/Deployment.h"
#include "cloud/CloudKitAvailability.h"
#include "cloud/CloudKitSyncService.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/linux/loop/UnixSignals.h"
#include "platform/linux/session/DesktopAids.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "session/TrackingSession.h"
#include "shell/app/TrayIcon.h"
#include "shell/look/Appearance.h"
#include "shell/state/ContentView.h"
#include "shell/state/DockVisibilityController.h"
#include "store/AppSettings.h"
#include "store/SafeModelContainer.h"

#include <QCoreApplication>
#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <unistd.h>
#include <utility>

namespace quorvane {
namespace {

constexpr Seconds patienceForWorkers = 2s;

QuorvaneApp* runningApp = nullptr;  // for whoever leaves by exit()

/// By the stored settings; where there are none, or they can't be read, all hours count.
bool isWithinWorkHours(ModelContext& context, Date now) {
    try {
        const auto settings = context.fetch<AppSettings>({.limit = 1});
        return settings.empty() || settings.front()->isWithinWorkHours(now);
    } catch (const StoreError&) {
        return true;
    }
}

void returnMemorySoon(platform::RunLoop& runLoop) {
    runLoop.post([] { malloc_trim(0); });
}

/// What this desktop needs before it tells of windows, and how it stands then.
std::string installDesktopAids() {
    std::string says;
    for (const auto& aid : platform::DesktopAids::here()) {
        if (!says.empty()) says += " ";
        says += std::string(aid.desktop) + ": " + aid.install().says + ".";
    }
    return says.empty() ? platform::DesktopAids::reasonForNone() : says;
}

}  // namespace

/// What lives from the first content on.
struct QuorvaneApp::Scene {
    explicit Scene(QuorvaneApp& app)
        : performanceReports(app.defaults_), desktop(app.parts_.runLoop),
          session(app.parts_.runLoop, desktop, app.container_.mainContext(), app.defaults_, app.parts_.console),
          permissionChecker({.runLoop = app.parts_.runLoop,
                             .accessibility = desktop.accessibility(),
                             .automation = desktop.automation(),
                             .keys = desktop.keys(),
                             .settingsPanes = desktop.settingsPanes(),
                             .applications = desktop.runningApplications(),
                             .browserURLs = session.browserURLs(),
                             .documents = session.documents(),
                             .console = app.parts_.console}),
          captureHealth(desktop, app.parts_.runLoop, session.tracker(), permissionChecker, app.localization_,
                        installDesktopAids),
          loginItem(QCoreApplication::applicationFilePath().toStdString()),
          autoStartManager(loginItem, desktop.settingsPanes(), app.parts_.runLoop, app.parts_.console,
                           app.localization_),
          menuBar(session.tracker(), permissionChecker, app.localization_,
                  {.openMainWindow = [&app] { app.openMainWindow(); },
                   .showAbout = [&app] { app.showAbout(); },
                   .quit = [&app] { app.parts_.runLoop.quit(); }}),
          tray(menuBar, appearance, app.parts_.sessionBus),
          cloudKitSyncService(std::make_unique<CloudKitSyncService>(
              app.parts_.runLoop, app.parts_.console, app.localization_,
              CloudKitAvailability::defaultContainer(app.parts_.cloud, app.parts_.logger))),
          launchTask(app.container_.mainContext(), app.parts_.runLoop, app.parts_.console, app.parts_.hooks),
          services{
              .container = app.container_,
              .context = app.container_.mainContext(),
              .tracker = session.tracker(),
              .categories = session.categories(),
              .permissionChecker = permissionChecker,
              .captureHealth = captureHealth,
              .menuBar = menuBar,
              .autoStartManager = autoStartManager,
              .defaults = app.defaults_,
              .performanceReports = performanceReports,
              .applicationIcons = desktop.applicationIcons(),
              .updates = app.updates_,
              .cloudKitSyncService = *cloudKitSyncService,
              .localization = app.localization_,
              .application = app.parts_.application,
              .console = app.parts_.console,
              .logger = app.parts_.logger,
              .runLoop = app.parts_.runLoop,
              .quit = [&app] { app.parts_.runLoop.quit(); },
              .returnMemory = [&app] { returnMemorySoon(app.parts_.runLoop); },
              .hasTray = [this] { return tray.hasTray(); },
              .hasTrayChanged = tray.hasTrayChanged,
              .setHideDockIcon =
                  [&app](bool hide, bool activate) { DockVisibilityController::apply(app.windows_, hide, activate); },
              .setPerformanceReportsEnabled = app.diagnostics_.canReport() ? std::function<void(bool)>([&app](bool on) {
                  app.diagnostics_.setReportsEnabled(on);
              })
                                                                           : nullptr,
              .aboutRequested = aboutRequested} {
        desktop.listenToBrowsers([&logger = app.parts_.logger](const std::string& line) {
            logger.log(line, LogLevel::warning, "Browsers");
        });
        // What a sync leaves free goes back to the system, too.
        syncChanged = cloudKitSyncService->changed.subscribe([this, &runLoop = app.parts_.runLoop] {
            if (!cloudKitSyncService->isSyncing()) returnMemorySoon(runLoop);
        });
    }

    PerformanceReportPreferences performanceReports;
    Appearance appearance;
    platform::LinuxDesktop desktop;
    TrackingSession session;
    PermissionChecker permissionChecker;
    CaptureHealthView captureHealth;
    platform::XdgLoginItem loginItem;
    AutoStartManager autoStartManager;
    MenuBarContentView menuBar;
    TrayIcon tray;
    std::unique_ptr<CloudKitSyncService> cloudKitSyncService;  ///< none at the very end, when no window is left
    LaunchTask launchTask;
    Signal<> aboutRequested;
    AppServices services;
    Subscription appearanceChanged;
    Subscription syncChanged;
};

QuorvaneApp::QuorvaneApp(Parts parts)
    : parts_(std::move(parts)), appDelegate_(parts_.logger), container_(SafeModelContainer::sharedContainer()),
      updates_({.runLoop = parts_.runLoop,
                .defaults = defaults_,
                .logger = parts_.logger,
                .application = parts_.application,
                .feedHost = std::string(deployment().updateHost),
                .publicKey = std::string(deployment().updatePublicKey),
                .makeHttpClient = parts_.makeHttpClient}),
      diagnostics_({.runLoop = parts_.runLoop,
                    .logger = parts_.logger,
                    .defaults = defaults_,
                    .application = parts_.application,
                    .language = std::string(localization_.language()),
                    .hasVisibleWindows = [this] { return windows_.hasVisibleWindows(); },
                    .makeHttpClient = parts_.makeHttpClient}) {
    setHooks();
    updates_.startIfNeeded();
    diagnostics_.startWatchdog();
    auto& instance = parts_.singleInstance;
    subscriptions_.push_back(instance.activated.subscribe(
        [this] { appDelegate_.applicationShouldHandleReopen(windows_, windows_.hasVisibleWindows()); }));
    subscriptions_.push_back(
        instance.actionActivated.subscribe([this](const std::string& action) { performAction(action); }));
    instance.setRecording = [this](bool isOn) { return setRecording(isOn); };
    subscriptions_.push_back(appDelegate_.quorvaneReopenMain.subscribe([this] { openWindow(); }));
    // A window is most of what the process holds; what it leaves free goes back to the system.
    subscriptions_.push_back(windows_.closed.subscribe([this] { returnMemorySoon(parts_.runLoop); }));
}

void QuorvaneApp::setHooks() {
    auto& hooks = parts_.hooks;
    if (!hooks.applyDockVisibility)
        hooks.applyDockVisibility = [this](bool hide) { DockVisibilityController::apply(windows_, hide, false); };
    if (!hooks.startMemoryMonitor)
        hooks.startMemoryMonitor = [this](Seconds interval) { diagnostics_.startMemoryMonitor(interval); };
}

QuorvaneApp::~QuorvaneApp() {
    subscriptions_.clear();
    parts_.singleInstance.setRecording = nullptr;
    windows_.close();
    endTracking();
    runningApp = nullptr;
    // Calls its questions to the cloud off; they would be waited for.
    if (scene_) scene_->cloudKitSyncService.reset();
    if (!parts_.runLoop.finishBackground(patienceForWorkers)) ::_exit(status_);
    scene_.reset();
    SafeModelContainer::reset();
}

int QuorvaneApp::run(bool isInBackground) {
    const platform::UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, [this](int) { parts_.runLoop.quit(); });
    runningApp = this;
    // Qt leaves by exit() when the display server goes; nothing on the stack is destroyed then.
    static const int registered = std::atexit([] {
        if (runningApp) runningApp->endTracking();
    });
    (void)registered;
    if (isInBackground)
        startInBackground();
    else
        openWindow();
    status_ = parts_.runLoop.run();
    endTracking();
    return status_;
}

void QuorvaneApp::endTracking() {
    if (!scene_ || std::exchange(hasEnded_, true)) return;
    scene_->session.stop();
}

QuorvaneApp::Scene& QuorvaneApp::scene() {
    if (!scene_) {
        scene_ = std::make_unique<Scene>(*this);
        applyAppearance(scene_->appearance.preference());
        scene_->appearanceChanged =
            scene_->appearance.changed.subscribe([this] { applyAppearance(scene_->appearance.preference()); });
    }
    return *scene_;
}

void QuorvaneApp::startInBackground() {
    scene().session.start();
    scene().launchTask.run();
}

void QuorvaneApp::openMainWindow() {
    windows_.activateIgnoringOtherApps();
    if (!windows_.makeKeyAndOrderFront()) openWindow();
}

void QuorvaneApp::openWindow() {
    windows_.show(parts_.makeMainWindow(scene().services));
    scene().launchTask.run();
}

void QuorvaneApp::showAbout() {
    openMainWindow();
    scene().aboutRequested.send();
}

void QuorvaneApp::performAction(const std::string& action) {
    if (action == "show") openMainWindow();
    if (action == "quit") parts_.runLoop.quit();
    if (action == "pause" || action == "start") setRecording(action == "start");
}

platform::ApplicationRemote::Recording QuorvaneApp::setRecording(bool isOn) {
    auto& tracker = scene().session.tracker();
    if (tracker.isTracking() != isOn) scene().menuBar.toggleTracking();
    return {.isOn = tracker.isTracking(), .hindrance = tracker.isTracking() ? hindrance() : ""};
}

/// Why nothing is recorded at this moment though it is wanted; empty if nothing stands in the way.
std::string QuorvaneApp::hindrance() {
    const auto& capture = scene().session.tracker().captureHealth();
    if (!capture.canSee()) return "nothing can be seen: " + capture.sentence();
    return isWithinWorkHours(container_.mainContext(), parts_.runLoop.now()) ? "" : "this is outside the work hours";
}

}  // namespace quorvane
