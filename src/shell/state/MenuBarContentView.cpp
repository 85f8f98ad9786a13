#include "shell/state/MenuBarContentView.h"

#include <utility>

namespace quorvane {
namespace {

using Kind = MenuBarItem::Kind;

MenuBarItem permissionRow(std::string text, bool isGranted) {
    return {.kind = Kind::permission,
            .text = std::move(text),
            .iconName = isGranted ? "check-circle" : "close-circle",
            .isGranted = isGranted};
}

MenuBarItem actionItem(std::string text, const char* iconName, MenuBarAction action) {
    return {.text = std::move(text), .iconName = iconName, .action = action};
}

/// What people read and can't choose.
MenuBarItem headingItem(Kind kind, std::string text) {
    return {.kind = kind, .text = std::move(text), .isEnabled = false};
}

const MenuBarItem separatorItem{.kind = Kind::separator, .isEnabled = false};

}  // namespace

MenuBarContentView::MenuBarContentView(ActivityTracker& tracker, PermissionChecker& permissionChecker,
                                       const Localization& localization, Application application)
    : tracker_(tracker), permissionChecker_(permissionChecker), localization_(localization),
      application_(std::move(application)),
      trackingChanged_(tracker.isTrackingChanged.subscribe([this](bool) { changed.send(); })),
      captureHealthChanged_(tracker.captureHealthChanged.subscribe([this] { changed.send(); })),
      presenceChanged_(tracker.presenceChanged.subscribe([this] { changed.send(); })),
      permissionsChanged_(permissionChecker.changed.subscribe([this] { notePermissions(); })) {}

std::string MenuBarContentView::title() const {
    return recordingSentence(tracker_, localization_);
}

/// The title, and why it is so where nobody would guess it.
std::string MenuBarContentView::heading() const {
    if (state() != RecordingState::blind && state() != RecordingState::partial) return title();
    return localization_.text("capture_blind_because", title(),
                              captureTrouble(tracker_.captureHealth(), localization_).reason);
}

const char* MenuBarContentView::iconName() const {
    switch (state()) {
    case RecordingState::paused: return "tray-paused";
    case RecordingState::blind: return "tray-blind";
    case RecordingState::away: return "tray-away";
    case RecordingState::partial: return "tray-partial";
    case RecordingState::recording: return "tray-recording";
    }
    return "";
}

std::vector<MenuBarItem> MenuBarContentView::items() const {
    const auto& texts = localization_;
    const bool isTracking = tracker_.isTracking();
    return {headingItem(Kind::title, heading()),
            separatorItem,
            actionItem(texts.text("open_main_window"), "window", MenuBarAction::openMainWindow),
            isTracking ? actionItem(texts.text("menu_bar_pause_recording"), "pause", MenuBarAction::toggleTracking)
                       : actionItem(texts.text("menu_bar_start_recording"), "record", MenuBarAction::toggleTracking),
            separatorItem,
            headingItem(Kind::section, texts.text("permission_status")),
            permissionRow(texts.text("accessibility_permission"), cachedAccessibility_),
            permissionRow(texts.text("automation_permission"), cachedAppleEvents_),
            permissionRow(texts.text("input_monitoring_permission"), cachedInputMonitoring_),
            actionItem(texts.text("refresh_permission_status"), "refresh", MenuBarAction::refreshPermissions),
            separatorItem,
            actionItem(texts.text("about_menu_title"), "info", MenuBarAction::showAbout),
            actionItem(texts.text("menu_bar_exit"), "power", MenuBarAction::quit)};
}

void MenuBarContentView::appear() {
    storePermissions();
    refreshPermissions();
}

void MenuBarContentView::perform(MenuBarAction action) {
    switch (action) {
    case MenuBarAction::none: return;
    case MenuBarAction::openMainWindow: return application_.openMainWindow();
    case MenuBarAction::toggleTracking: return toggleTracking();
    case MenuBarAction::refreshPermissions: return refreshPermissions();
    case MenuBarAction::showAbout: return application_.showAbout();
    case MenuBarAction::quit: return application_.quit();
    }
}

void MenuBarContentView::toggleTracking() {
    tracker_.toggle();
}

void MenuBarContentView::refreshPermissions() {
    isAwaitingPermissions_ = true;
    permissionChecker_.refreshPermissions();
}

void MenuBarContentView::notePermissions() {
    if (!isAwaitingPermissions_ || permissionChecker_.isCheckingPermissions()) return;
    isAwaitingPermissions_ = false;
    storePermissions();
}

void MenuBarContentView::storePermissions() {
    const auto status = permissionChecker_.currentStatus();
    if (status == cachedPermissions()) return;
    cachedAccessibility_ = status.accessibility;
    cachedAppleEvents_ = status.appleEvents;
    cachedInputMonitoring_ = status.inputMonitoring;
    changed.send();
}

}  // namespace quorvane
