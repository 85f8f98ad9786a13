#pragma once

#include "base/Signal.h"
#include "capture/PermissionChecker.h"
#include "l10n/Localization.h"
#include "shell/state/RecordingState.h"
#include "tracking/ActivityTracker.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What an item of the menu bar's menu does.
enum class MenuBarAction { none, openMainWindow, toggleTracking, refreshPermissions, showAbout, quit };

/// An item of that menu, as it stands there.
struct MenuBarItem {
    enum class Kind { title, separator, action, section, permission };
    Kind kind = Kind::action;
    std::string text{};         ///< empty for a separator
    const char* iconName = "";  ///< in the icon set; empty: none
    bool isEnabled = true;
    std::optional<bool> isGranted{};  ///< of a permission
    MenuBarAction action = MenuBarAction::none;
    friend bool operator==(const MenuBarItem&, const MenuBarItem&) = default;
};

/// The menu bar item without its pixels: start and pause, the permissions, the way back to the window. What it is made
/// on outlives it. Main thread only.
class MenuBarContentView {
public:
    /// What only the application can do.
    struct Application {
        std::function<void()> openMainWindow;  ///< brings a window to the front, or makes one
        std::function<void()> showAbout;
        std::function<void()> quit;
    };

    MenuBarContentView(ActivityTracker& tracker, PermissionChecker& permissionChecker, const Localization& localization,
                       Application application);

    /// The menu bar item's own text and icon.
    [[nodiscard]] RecordingState state() const { return recordingState(tracker_); }
    [[nodiscard]] std::string title() const;
    [[nodiscard]] const char* iconName() const;

    /// Always as many, in the same order; what changes is their text, icon and state. The permissions come from the
    /// cache: nothing is asked here.
    [[nodiscard]] std::vector<MenuBarItem> items() const;

    /// The menu comes on screen: takes what is known of the permissions, and asks anew in the background.
    void appear();
    void perform(MenuBarAction action);

    /// Pauses tracking, or starts it.
    void toggleTracking();
    /// Asks for the permissions in the background and keeps the answers.
    void refreshPermissions();

    [[nodiscard]] PermissionStatus cachedPermissions() const {
        return {cachedAccessibility_, cachedAppleEvents_, cachedInputMonitoring_};
    }

    /// Sent after an item has changed.
    Signal<> changed;

private:
    [[nodiscard]] std::string heading() const;
    void storePermissions();
    void notePermissions();

    ActivityTracker& tracker_;
    PermissionChecker& permissionChecker_;
    const Localization& localization_;
    Application application_;
    bool cachedAccessibility_ = false;
    bool cachedAppleEvents_ = false;
    bool cachedInputMonitoring_ = false;
    bool isAwaitingPermissions_ = false;
    Subscription trackingChanged_;
    Subscription captureHealthChanged_;
    Subscription presenceChanged_;
    Subscription permissionsChanged_;
};

}  // namespace quorvane
