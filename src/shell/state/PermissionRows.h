#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "capture/PermissionChecker.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// The permissions as the settings show them, each with what it is for and a way to grant it, and two tests of what
/// they are for. What it is made on outlives it. Main thread only.
class PermissionRows {
public:
    enum class Permission { accessibility, automation, inputMonitoring };

    struct Row {
        Permission permission = Permission::accessibility;
        std::string title;
        std::string help;
        std::string state;  ///< granted or not, in a word
        bool isGranted = false;
        std::string grantText;  ///< of a button; empty where it is granted, and where it would do nothing
        friend bool operator==(const Row&, const Row&) = default;
    };

    enum class CaptureTest { browserURL, documentPath };
    /// Time to bring another application to the front: when the button is pressed, this one is.
    static constexpr Seconds timeToSwitch = 3s;

    /// How a test stands.
    struct TestState {
        bool isRunning = false;
        std::optional<PermissionChecker::TestResult> result{};  ///< of the last one
        friend bool operator==(const TestState&, const TestState&) = default;
    };

    PermissionRows(PermissionChecker& checker, platform::RunLoop& runLoop, const Localization& localization);

    [[nodiscard]] std::array<Row, 3> rows() const;
    [[nodiscard]] bool isChecking() const { return checker_.isCheckingPermissions(); }

    /// Accessibility is switched on at once where that is possible; else the desktop's settings open.
    void grant(Permission permission);
    /// Asks for all of them again, in the background.
    void refresh();

    /// Reads what is in front after `timeToSwitch`. Nothing happens while a test runs.
    void run(CaptureTest test);
    [[nodiscard]] const TestState& test(CaptureTest test) const;
    /// What the last test brought; empty before the first.
    [[nodiscard]] std::string resultText(CaptureTest test) const;
    [[nodiscard]] bool isTesting() const;

    Signal<> changed;

private:
    void read(CaptureTest test);
    [[nodiscard]] TestState& stateOf(CaptureTest test);

    PermissionChecker& checker_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    TestState browserURL_;
    TestState documentPath_;
    bool isRefused_ = false;  ///< accessibility, when it was asked for last
    std::unique_ptr<platform::WorkItem> waiting_;
    Subscription permissionsChanged_;
    WeakSource<PermissionRows> weak_{*this};
};

}  // namespace quorvane
