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

/// The best known ones, in lower case; a test of the commonest case and no list of what is captured.
constexpr auto testedBrowsers =
    std::to_array<std::string_view>({"com.apple.safari", "com.google.chrome", "com.brave.browser",
                                     "com.microsoft.edgemac", "company.thebrowser.browser"});

const char* mark(bool isGranted) {
    return isGranted ? "✅ 已授权" : "❌ 未授权";
}

bool checkAccessibility(const Sources& sources) {
    const bool isGranted = sources.accessibility.isProcessTrusted();
    sources.console.line("PermissionChecker: Accessibility permission: {}", mark(isGranted));
    return isGranted;
}

bool checkAppleEvents(const Sources& sources) {
    const auto result = sources.automation.run({.family = platform::ScriptFamily::permissionTest,
                                                .applicationName = "System Events",
                                                .source = "tell application \"System Events\" to return true"});
    const bool isGranted = std::holds_alternative<std::string>(result);
    sources.console.line("PermissionChecker: Apple Events permission: {}", mark(isGranted));
    return isGranted;
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

constexpr const char* nothingInFront = "无法获取前台应用";

TestResult testBrowser(const Sources& sources) {
    const auto bundleId = frontmostBundleId(sources);
    if (!bundleId) return {.success = false, .message = nothingInFront};
    if (std::ranges::count(testedBrowsers, text::lowercased(*bundleId)) == 0)
        return {.success = false, .message = "前台应用不是浏览器：" + *bundleId};
    if (auto url = sources.browserURLs.frontURL()) return {.success = true, .message = std::move(*url)};
    return {.success = false, .message = "无法获取浏览器URL，可能缺少自动化权限"};
}

TestResult testDocument(const Sources& sources) {
    const auto bundleId = frontmostBundleId(sources);
    if (!bundleId) return {.success = false, .message = nothingInFront};
    const WindowInfo info = sources.documents.getDocumentInfo(*bundleId);
    if (const auto document = info.document.value_or(""); !document.empty())
        return {.success = true, .message = document};
    if (const auto title = info.title.value_or(""); !title.empty())
        return {.success = true, .message = "窗口标题: " + title};
    return {.success = false, .message = "无法获取文档信息，可能缺少辅助功能或自动化权限"};
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
    sources_.console.line("PermissionChecker: Input Monitoring permission: {}", mark(probe != nullptr));
    return probe != nullptr;
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
