#include "shell/state/PermissionRows.h"

namespace quorvane {

PermissionRows::PermissionRows(PermissionChecker& checker, platform::RunLoop& runLoop, const Localization& localization)
    : checker_(checker), runLoop_(runLoop), localization_(localization),
      permissionsChanged_(checker.changed.subscribe([this] { changed.send(); })) {}

std::array<PermissionRows::Row, 3> PermissionRows::rows() const {
    const Localization& texts = localization_;
    const auto row = [&texts](Permission permission, bool isGranted, const std::string& title, const std::string& help,
                              const std::string& grantText, bool canAct) {
        return Row{.permission = permission,
                   .title = title,
                   .help = help,
                   .state = isGranted ? texts.text("ui_permission_granted") : texts.text("ui_permission_missing"),
                   .isGranted = isGranted,
                   .grantText = isGranted || !canAct ? std::string() : grantText};
    };
    const PermissionStatus status = checker_.currentStatus();
    return {row(Permission::accessibility, status.accessibility, texts.text("accessibility_permission"),
                texts.text("ui_accessibility_permission_help"), texts.text("ui_permission_grant"),
                !isRefused_ || checker_.canOpenAccessibilitySettings()),
            row(Permission::automation, status.appleEvents, texts.text("automation_permission"),
                texts.text("ui_automation_permission_help"), texts.text("ui_permission_open_settings"),
                checker_.canOpenAutomationSettings()),
            row(Permission::inputMonitoring, status.inputMonitoring, texts.text("input_monitoring_permission"),
                texts.text("ui_input_monitoring_permission_help"), {}, false)};
}

void PermissionRows::grant(Permission permission) {
    switch (permission) {
    case Permission::accessibility:
        checker_.requestAccessibilityPermission();
        isRefused_ = !checker_.checkAccessibilityPermission();
        if (isRefused_) checker_.openAccessibilitySettings();
        return changed.send();
    case Permission::automation: return checker_.openAutomationSettings();
    case Permission::inputMonitoring: return checker_.openInputMonitoringSettings();
    }
}

void PermissionRows::refresh() {
    isRefused_ = false;
    checker_.refreshPermissions();
}

void PermissionRows::run(CaptureTest test) {
    if (isTesting()) return;
    stateOf(test) = {.isRunning = true};
    waiting_ = runLoop_.after(timeToSwitch, [this, test] { read(test); });
    changed.send();
}

void PermissionRows::read(CaptureTest test) {
    const auto tested = [weak = weak_.handle(), test](const PermissionChecker::TestResult& result) {
        auto* const self = weak.get();
        if (self == nullptr) return;
        self->stateOf(test) = {.isRunning = false, .result = result};
        self->changed.send();
    };
    switch (test) {
    case CaptureTest::browserURL: return checker_.testBrowserURLFetch(tested);
    case CaptureTest::documentPath: return checker_.testDocumentPathFetch(tested);
    }
}

const PermissionRows::TestState& PermissionRows::test(CaptureTest test) const {
    return test == CaptureTest::browserURL ? browserURL_ : documentPath_;
}

std::string PermissionRows::resultText(CaptureTest test) const {
    using Outcome = PermissionChecker::TestResult::Outcome;
    const auto& result = this->test(test).result;
    if (!result) return {};
    switch (result->outcome) {
    case Outcome::found: return result->detail;
    case Outcome::titleAlone: return localization_.text("capture_test_title", result->detail);
    case Outcome::nothingInFront: return localization_.text("capture_test_nothing_in_front");
    case Outcome::noBrowser: return localization_.text("capture_test_no_browser", result->detail);
    case Outcome::noAddress: return localization_.text("capture_test_no_address");
    case Outcome::noDocument: return localization_.text("capture_test_no_document");
    }
    return {};
}

PermissionRows::TestState& PermissionRows::stateOf(CaptureTest test) {
    return test == CaptureTest::browserURL ? browserURL_ : documentPath_;
}

bool PermissionRows::isTesting() const {
    return browserURL_.isRunning || documentPath_.isRunning;
}

}  // namespace quorvane
