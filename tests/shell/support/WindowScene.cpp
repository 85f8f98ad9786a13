#include "shell/support/WindowScene.h"

#include "shell/support/SampleDays.h"
#include "support/Builders.h"

#include <QCoreApplication>

namespace quorvane {

WindowScene::WindowScene(std::string_view language, bool isEmpty, const std::string& feedKey, bool hasCloud)
    : runLoop(at("2026-03-12 16:48:59.5")), logger_(runLoop, systemLog_, console, application_),
      localization_(language), session_(runLoop, desktop, store.context(), defaults, console),
      updates_(
          {.runLoop = runLoop,
           .defaults = defaults,
           .logger = logger_,
           .application = application_,
           .feedHost = feedKey.empty() ? "" : feedHost,
           .publicKey = feedKey,
           .makeHttpClient = [this] { return std::make_unique<platform::SimulatedHttpClient>(runLoop, network); }}),
      permissions_({.runLoop = runLoop,
                    .accessibility = desktop.accessibility(),
                    .automation = desktop.automation(),
                    .keys = desktop.keys(),
                    .settingsPanes = desktop.settingsPanes(),
                    .applications = desktop.runningApplications(),
                    .browserURLs = session_.browserURLs(),
                    .documents = session_.documents(),
                    .console = console}),
      captureHealth_(desktop, runLoop, session_.tracker(), permissions_, localization_, [] { return "installed"; }),
      menuBar_(session_.tracker(), permissions_, localization_, {}),
      autoStart_(loginItem_, desktop.settingsPanes(), runLoop, console, localization_),
      cloudKitSyncService_(runLoop, console, localization_,
                           hasCloud ? std::make_unique<platform::SimulatedRecordContainer>(cloud) : nullptr),
      services_{.container = store.container(),
                .context = store.context(),
                .tracker = session_.tracker(),
                .categories = session_.categories(),
                .permissionChecker = permissions_,
                .captureHealth = captureHealth_,
                .menuBar = menuBar_,
                .autoStartManager = autoStart_,
                .defaults = defaults,
                .performanceReports = performanceReports_,
                .applicationIcons = desktop.applicationIcons(),
                .updates = updates_,
                .cloudKitSyncService = cloudKitSyncService_,
                .localization = localization_,
                .application = application_,
                .console = console,
                .logger = logger_,
                .runLoop = runLoop,
                .randomWords = [this] { return words_ += 0x9E3779B97F4A7C15; },  // the same in every run
                .quit = [this] { hasQuit = true; },
                .returnMemory = [] {},
                .hasTray = [this] { return hasTray; },
                .hasTrayChanged = hasTrayChanged_,
                .setHideDockIcon = [](bool, bool) {},
                .setPerformanceReportsEnabled = [this](bool on) { performanceReports_.setEnabled(on); },
                .aboutRequested = aboutRequested_} {
    if (!isEmpty) insertSampleDays(store.context());
    desktop.bringToFront("com.apple.terminal", "Terminal");
}

MainWindow& WindowScene::open(QSize size) {
    window_ = std::make_unique<MainWindow>(services_);
    if (size.isValid()) window_->resize(size);
    window_->show();
    settle();
    return *window_;
}

void WindowScene::workUntil(std::string_view time) {
    desktop.typeUntil(time);
    runLoop.playUntil(time);
    settle();
}

void WindowScene::settle() {
    constexpr int rounds = 4;  // each side may give the other something to do
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents();
        runLoop.runPosted();
    }
}

}  // namespace quorvane
