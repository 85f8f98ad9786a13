#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "capture/BrowserURLSource.h"
#include "capture/DocumentPathFetcher.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Accessibility.h"
#include "platform/Automation.h"
#include "platform/KeyEventSource.h"
#include "platform/RunLoop.h"
#include "platform/RunningApplications.h"
#include "platform/SettingsPanes.h"

#include <functional>
#include <memory>
#include <string>

namespace quorvane {

/// The panes in which the user grants permissions.
namespace Permissions {
inline constexpr const char* accessibilityPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
inline constexpr const char* automationPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation";
inline constexpr const char* inputMonitoringPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent";
}  // namespace Permissions

/// What this process may do.
struct PermissionStatus {
    bool accessibility = false;    ///< read what windows show
    bool appleEvents = false;      ///< send scripts
    bool inputMonitoring = false;  ///< hear that keys move
    friend bool operator==(const PermissionStatus&, const PermissionStatus&) = default;
};

/// Tells which permissions the process has, and whether what they are for works. Reports only: the capture itself
/// checks anew and runs without any. Main thread only, but for what says otherwise.
class PermissionChecker {
public:
    /// All of it outlives every worker.
    struct Sources {
        platform::RunLoop& runLoop;
        platform::Accessibility& accessibility;
        platform::Automation& automation;
        platform::KeyEventSource& keys;
        platform::SettingsPanes& settingsPanes;
        platform::RunningApplications& applications;
        BrowserURLSource& browserURLs;
        DocumentPathFetcher& documents;
        ConsoleSink& console;
    };

    /// What a test of the capture brought.
    struct TestResult {
        enum class Outcome { found, titleAlone, nothingInFront, noBrowser, noAddress, noDocument };

        Outcome outcome = Outcome::nothingInFront;
        std::string detail{};  ///< the URL or document, the title alone, the bundle id of what is no browser
        [[nodiscard]] bool success() const { return outcome == Outcome::found || outcome == Outcome::titleAlone; }
        friend bool operator==(const TestResult&, const TestResult&) = default;
    };
    using Tested = std::function<void(const TestResult&)>;

    /// Refreshes itself after 0.1 s.
    explicit PermissionChecker(const Sources& sources);

    [[nodiscard]] bool accessibilityPermissionGranted() const { return published_.accessibility; }
    [[nodiscard]] bool appleEventsPermissionGranted() const { return published_.appleEvents; }
    [[nodiscard]] bool inputMonitoringPermissionGranted() const { return published_.inputMonitoring; }
    [[nodiscard]] bool isCheckingPermissions() const { return isCheckingPermissions_; }
    [[nodiscard]] PermissionStatus currentStatus() const { return published_; }
    Signal<> changed;  ///< after each change of what the five above tell

    /// Reads the permissions again. On the main thread this is `refreshPermissionsAsync()`; on another one it blocks
    /// that, and publishes whether or not a refresh is under way.
    void refreshPermissions();

    /// The same in the background, unless that is under way. From any thread.
    void refreshPermissionsAsync();

    // What holds now, read anew and printed. The first two from any thread; the last one blocks and may make the system
    // ask the user.
    bool checkAccessibilityPermission() const;
    bool checkAppleEventsPermission() const;
    bool checkInputMonitoringPermission() const;  ///< main thread only

    /// Makes the system ask the user, and refreshes after 1 s. A further request within that second begins it anew.
    void requestAccessibilityPermission();

    [[nodiscard]] bool canOpenAccessibilitySettings() const {
        return sources_.settingsPanes.canOpen(Permissions::accessibilityPane);
    }
    [[nodiscard]] bool canOpenAutomationSettings() const {
        return sources_.settingsPanes.canOpen(Permissions::automationPane);
    }
    void openAccessibilitySettings() { sources_.settingsPanes.open(Permissions::accessibilityPane); }
    void openAutomationSettings() { sources_.settingsPanes.open(Permissions::automationPane); }
    void openInputMonitoringSettings() { sources_.settingsPanes.open(Permissions::inputMonitoringPane); }

    /// Reads the URL of the browser in front, or the document of the application in front, on a worker, and calls
    /// `tested` on the main thread; if the checker is gone by then, not at all.
    void testBrowserURLFetch(Tested tested);
    void testDocumentPathFetch(Tested tested);

private:
    void test(TestResult (*work)(const Sources&), Tested tested);
    void publish(PermissionStatus status, bool isChecking);

    Sources sources_;
    PermissionStatus published_;
    bool isCheckingPermissions_ = false;
    std::unique_ptr<platform::WorkItem> firstRefresh_;
    std::unique_ptr<platform::WorkItem> refreshAfterRequest_;
    WeakSource<PermissionChecker> weak_{*this};
};

}  // namespace quorvane
