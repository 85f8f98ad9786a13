#include "capture/BrowserURLFetcher.h"

#include "platform/Clock.h"

#include <utility>

namespace quorvane {
namespace {

constexpr Seconds permissionValidity = 300s;
constexpr Seconds slowScript = 1s;

}  // namespace

BrowserURLFetcher::BrowserURLFetcher(platform::RunningApplications& applications, platform::Automation& automation,
                                     AppleScriptManager& scripts, AccessibilityBrowserURLParser& parser,
                                     ConsoleSink& console, std::function<Seconds()> uptime)
    : applications_(applications), automation_(automation), scripts_(scripts), parser_(parser), console_(console),
      uptime_(std::move(uptime)) {}

std::optional<std::string> BrowserURLFetcher::fetchCurrentURL() {
    const bool mayUseScripts = checkAppleEventsPermission();
    if (!mayUseScripts) console_.line("BrowserURLFetcher: ⚠️ Apple Events权限检查失败，尝试辅助方案");
    const auto application = applications_.frontmost();
    if (!application || !application->bundleIdentifier) {
        console_.line("BrowserURLFetcher: ❌ 无法获取前台应用或Bundle ID");
        return std::nullopt;
    }
    const std::string& bundleId = *application->bundleIdentifier;
    if (auto url = scriptedURL(*application, bundleId, mayUseScripts)) return url;
    auto url = parser_.getURL(bundleId, application);
    if (!url) console_.line("BrowserURLFetcher: ⚠️ 无法获取到URL");
    return url;
}

std::optional<std::string> BrowserURLFetcher::scriptedURL(const platform::RunningApplication& application,
                                                          const std::string& bundleId, bool mayUseScripts) {
    const auto name = AppleScriptManager::scriptName(automation_.scriptIdentity(bundleId));
    if (!name) {
        console_.line("BrowserURLFetcher: ❌ 不支持的浏览器: {}", bundleId);
        return std::nullopt;
    }
    if (applications_.isTerminated(application.processIdentifier)) {
        console_.line("BrowserURLFetcher: ⚠️ 应用 {} 未运行或无法访问", bundleId);
        return std::nullopt;
    }
    if (!mayUseScripts) return std::nullopt;
    const Seconds start = uptime_();
    auto result = scripts_.executeScript(*name);
    const Seconds elapsed = uptime_() - start;
    if (!result) {
        console_.line("BrowserURLFetcher: ❌ AppleScript 执行失败");
        return std::nullopt;
    }
    if (elapsed >= slowScript)
        console_.line("BrowserURLFetcher: ⚠️ AppleScript 执行较慢: {:.3f}秒", elapsed.count());
    if (!result->empty() && !result->starts_with("ERROR:")) return result;
    console_.line("BrowserURLFetcher: ⚠️ AppleScript 返回错误或空结果");
    return std::nullopt;
}

bool BrowserURLFetcher::checkAppleEventsPermission() {
    if (const auto valid = validPermission()) return *valid;
    const auto result = automation_.run({.family = platform::ScriptFamily::permissionTest,
                                         .applicationName = "System Events",
                                         .source = "tell application \"System Events\" to return true"});
    const auto* error = std::get_if<platform::ScriptError>(&result);
    cache(error ? Permission::denied : Permission::granted);
    if (error) console_.line("BrowserURLFetcher: Apple Events permission denied: {}", error->message);
    return !error;
}

std::optional<bool> BrowserURLFetcher::validPermission() {
    const std::lock_guard lock(permissionLock_);
    if (cachedPermission_ == Permission::unknown || !lastPermissionCheck_ ||
        platform::currentDate() - *lastPermissionCheck_ >= permissionValidity)
        return std::nullopt;
    return cachedPermission_ == Permission::granted;
}

void BrowserURLFetcher::cache(Permission permission) {
    const std::lock_guard lock(permissionLock_);
    cachedPermission_ = permission;
    lastPermissionCheck_ = platform::currentDate();
}

}  // namespace quorvane
