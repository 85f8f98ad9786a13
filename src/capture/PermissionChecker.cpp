#include "capture/PermissionChecker.h"

#include "base/Text.h"
#include "platform/InBackground.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

using Sources = PermissionChecker::Sources;
using TestResult = PermissionChecker::TestResult;
using Outcome = TestResult::Outcome;

/// The best known ones, in lower case; a test of the commonest case and no list of what is captured.
constexpr auto testedBrowsers =
    std::to_array<std::string_view>({"com.apple.safari", "com.google.chrome", "com.brave.browser",
                                     "com.microsoft.edgemac", "company.thebrowser.browser"});

/// Writes what was found, and returns it.
bool told(const Sources& sources, const char* permission, bool isGranted) {
    sources.console.line("PermissionChecker: {} permission: {}", permission, isGranted ? "✅ 已授权" : "❌ 未授权");
    return isGranted;
}

bool checkAccessibility(const Sources& sources) {
    return told(sources, "Accessibility", sources.accessibility.isProcessTrusted());
}

bool checkAppleEvents(const Sources& sources) {
    const auto result = sources.automation.run({.family = platform::ScriptFamily::permissionTest,
                                                .applicationName = "System Events",
                                                .source = "tell application \"System Events\" to return true"});
    return told(sources, "Apple Events", std::holds_alternative<std::string>(result));
}

/// What may block, and so is asked on a worker. Keys are heard on the main thread alone: their check, which is short,
/// is made there when the rest is known.
PermissionStatus checkWhatBlocks(const Sources& sources) {
    PermissionStatus status;
    status.accessibility = checkAccessibility(sources);
    status.appleEvents = checkAppleEvents(sources);
    return status;
}

std::optional<std::string> frontmostBundleId(const Sources& sources) {
    const auto application = sources.applications.frontmost();
    return application ? application->bundleIdentifier : std::nullopt;
}

TestResult testBrowser(const Sources& sources) {
    const auto bundleId = frontmostBundleId(sources);
    if (!bundleId) return {Outcome::nothingInFront};
    if (std::ranges::count(testedBrowsers, text::lowercased(*bundleId)) == 0) return {Outcome::noBrowser, *bundleId};
    if (auto url = sources.browserURLs.frontURL()) return {Outcome::found, std::move(*url)};
    return {Outcome::noAddress};
}

TestResult testDocument(const Sources& sources) {
    const auto bundleId = frontmostBundleId(sources);
    if (!bundleId) return {Outcome::nothingInFront};
    const WindowInfo info = sources.documents.getDocumentInfo(*bundleId);
    if (const auto document = info.document.value_or(""); !document.empty()) return {Outcome::found, document};
    if (const auto title = info.title.value_or(""); !title.empty()) return {Outcome::titleAlone, title};
    return {Outcome::noDocument};
}

}  // namespace

PermissionChecker::PermissionChecker(const Sources& sources) : sources_(sources) {
    firstRefresh_ = sources_.runLoop.after(0.1s, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->refreshPermissionsAsync();
    });
}

void PermissionChecker::refreshPermissions() {
    if (sources_.runLoop.isMainThread()) {
        refreshPermissionsAsync();
        return;
    }
    sources_.runLoop.post([weak = weak_.handle(), status = checkWhatBlocks(sources_)]() mutable {
        auto* self = weak.get();
        if (!self) return;
        status.inputMonitoring = self->checkInputMonitoringPermission();
        self->publish(status, self->isCheckingPermissions_);
    });
}

void PermissionChecker::refreshPermissionsAsync() {
    sources_.runLoop.post([weak = weak_.handle()] {
        auto* self = weak.get();
        if (!self || self->isCheckingPermissions_) return;
        self->publish(self->published_, true);
        if (!weak) return;  // a listener closed the screen
        platform::inBackground(
            self->sources_.runLoop, [sources = self->sources_] { return checkWhatBlocks(sources); },
            [weak](std::future<PermissionStatus> checked) {
                auto* checker = weak.get();
                if (!checker) return;
                PermissionStatus status = checked.get();
                status.inputMonitoring = checker->checkInputMonitoringPermission();
                checker->publish(status, false);
            });
    });
}

void PermissionChecker::publish(PermissionStatus status, bool isChecking) {
    published_ = status;
    isCheckingPermissions_ = isChecking;
    changed.send();
}

bool PermissionChecker::checkAccessibilityPermission() const {
    return checkAccessibility(sources_);
}

bool PermissionChecker::checkAppleEventsPermission() const {
    return checkAppleEvents(sources_);
}

bool PermissionChecker::checkInputMonitoringPermission() const {
    assert(sources_.runLoop.isMainThread());
    const auto probe = sources_.keys.createTap(platform::KeyEvents::keyDown, [] {});
    if (probe) probe->enable(false);
    return told(sources_, "Input Monitoring", probe != nullptr);
}

void PermissionChecker::requestAccessibilityPermission() {
    if (!sources_.accessibility.requestTrust())
        sources_.console.line("PermissionChecker: 正在请求 Accessibility 权限...");
    refreshAfterRequest_ = sources_.runLoop.after(1s, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->refreshPermissionsAsync();
    });
}

void PermissionChecker::testBrowserURLFetch(Tested tested) {
    test(testBrowser, std::move(tested));
}

void PermissionChecker::testDocumentPathFetch(Tested tested) {
    test(testDocument, std::move(tested));
}

void PermissionChecker::test(TestResult (*work)(const Sources&), Tested tested) {
    platform::inBackground(
        sources_.runLoop, [work, sources = sources_] { return work(sources); },
        [weak = weak_.handle(), tested = std::move(tested)](std::future<TestResult> result) {
            if (weak) tested(result.get());
        });
}

}  // namespace quorvane
