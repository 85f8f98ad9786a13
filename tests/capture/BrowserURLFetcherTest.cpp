#include "capture/BrowserURLFetcher.h"

#include "platform/Clock.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAutomation.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

#include <algorithm>

namespace quorvane {
namespace {

using platform::Script;
using platform::ScriptError;
using platform::ScriptFamily;
using platform::ScriptResult;

constexpr const char* noPermission = "BrowserURLFetcher: ⚠️ Apple Events权限检查失败，尝试辅助方案";
constexpr const char* noScript = "BrowserURLFetcher: ❌ AppleScript 执行失败";
constexpr const char* urlFromTree = "AccessibilityBrowserURLParser: 通过AXURL获取URL: https://tree.example/...";

/// Safari in front, with a page in its tree; scripts answer `scripted`, the test of permission answers `permission`.
class BrowserURLFetcherTest : public testing::Test {
protected:
    BrowserURLFetcherTest() {
        bringToFront("com.apple.Safari");
        accessibility.setApplication(7, "application");
        accessibility.setElement("application", platform::AccessibleName::focusedWindow, "window");
        accessibility.setText("window", platform::AccessibleName::url, "https://tree.example/x?q", true);
        automation.answer([this](const Script& script) {
            if (script.family == ScriptFamily::permissionTest) return permission;
            runLoop.sleepFor(duration);
            return scripted;
        });
        runLoop.runPosted();
        console.clear();
    }

    void bringToFront(const std::optional<std::string>& bundleId) {
        applications.setFrontmost(platform::RunningApplication{.processIdentifier = 7, .bundleIdentifier = bundleId});
    }
    int runsOf(ScriptFamily family) const {
        const auto sent = automation.scripts();
        return static_cast<int>(std::ranges::count(sent, family, &Script::family));
    }

    platform::SimulatedRunLoop runLoop{dateFromSecondsSince1970(1772442000)};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::SimulatedRunningApplications applications;
    platform::SimulatedAccessibility accessibility;
    platform::SimulatedAutomation automation;
    RecordingConsole console;
    ScriptResult permission = "true";
    ScriptResult scripted = "https://script.example/";
    Seconds duration = 0.1s;
    AppleScriptManager scripts{runLoop, automation, console, [this] { return runLoop.uptime(); }};
    AccessibilityBrowserURLParser parser{accessibility, applications, console};
    BrowserURLFetcher fetcher{applications, automation, scripts, parser, console, [this] { return runLoop.uptime(); }};
};

TEST_F(BrowserURLFetcherTest, AScriptThatAnswersSparesTheTree) {
    EXPECT_EQ(fetcher.frontURL(), "https://script.example/");
    EXPECT_THAT(accessibility.asked(), IsEmpty());
    EXPECT_THAT(console.lines(), IsEmpty());
    EXPECT_EQ(automation.scripts().front(), (Script{.family = ScriptFamily::permissionTest,
                                                    .applicationName = "System Events",
                                                    .source = "tell application \"System Events\" to return true"}));
}

TEST_F(BrowserURLFetcherTest, WhatAScriptDoesNotTellTheTreeDoes) {
    const std::pair<ScriptResult, std::vector<std::string>> rows[] = {
        {"ERROR:-600:Safari is not running",
         {"BrowserURLFetcher: ⚠️ AppleScript 返回错误或空结果", urlFromTree}},
        {" ", {"AppleScriptManager: ⚠️ 预编译脚本返回空结果: safari", noScript, urlFromTree}},
        {ScriptError{-1712, "timed out"},
         {"AppleScriptManager: ❌ 预编译脚本执行错误: safari, 错误: timed out", noScript, urlFromTree}}};
    for (const auto& [result, lines] : rows) {
        console.clear();
        scripted = result;
        EXPECT_EQ(fetcher.fetchCurrentURL(), "https://tree.example/x?q");
        EXPECT_EQ(console.lines(), lines);
    }
}

TEST_F(BrowserURLFetcherTest, AScriptThatTakesASecondIsReportedUnlessItFailed) {
    duration = 0.999s;
    (void)fetcher.fetchCurrentURL();
    EXPECT_THAT(console.lines(), IsEmpty());
    duration = 1s;
    EXPECT_EQ(fetcher.fetchCurrentURL(), "https://script.example/");
    duration = 1.2345s;
    scripted = "ERROR:-1:x";
    (void)fetcher.fetchCurrentURL();
    scripted = ScriptError{-1712, "timed out"};
    (void)fetcher.fetchCurrentURL();
    EXPECT_THAT(console.lines(),
                ElementsAre("BrowserURLFetcher: ⚠️ AppleScript 执行较慢: 1.000秒",
                            "BrowserURLFetcher: ⚠️ AppleScript 执行较慢: 1.234秒",
                            "BrowserURLFetcher: ⚠️ AppleScript 返回错误或空结果", urlFromTree,
                            "AppleScriptManager: ❌ 预编译脚本执行错误: safari, 错误: timed out", noScript,
                            urlFromTree));
}

TEST_F(BrowserURLFetcherTest, OnlyTheTreeIsAskedWhereNoScriptCanHelp) {
    permission = ScriptError{-1743, "Not authorized."};
    EXPECT_EQ(fetcher.fetchCurrentURL(), "https://tree.example/x?q");
    EXPECT_THAT(console.lines(), ElementsAre("BrowserURLFetcher: Apple Events permission denied: Not authorized.",
                                             noPermission, urlFromTree));

    runLoop.playFor(300s);
    permission = "true";
    console.clear();
    bringToFront("org.example.reader");
    EXPECT_EQ(fetcher.fetchCurrentURL(), "https://tree.example/x?q");
    EXPECT_THAT(console.lines(), ElementsAre("BrowserURLFetcher: ❌ 不支持的浏览器: org.example.reader", urlFromTree));

    console.clear();
    bringToFront("com.brave.Browser");
    applications.setTerminated(7);
    EXPECT_EQ(fetcher.fetchCurrentURL(), "https://tree.example/x?q");
    EXPECT_THAT(
        console.lines(),
        ElementsAre("BrowserURLFetcher: ⚠️ 应用 com.brave.Browser 未运行或无法访问", urlFromTree));
    EXPECT_EQ(runsOf(ScriptFamily::browserURL), 0);
}

TEST_F(BrowserURLFetcherTest, NoneAndALineIfNobodyKnows) {
    scripted = "";
    accessibility.setTrusted(false);
    EXPECT_EQ(fetcher.fetchCurrentURL(), std::nullopt);
    EXPECT_EQ(console.lines().back(), "BrowserURLFetcher: ⚠️ 无法获取到URL");
    bringToFront(std::nullopt);
    EXPECT_EQ(fetcher.fetchCurrentURL(), std::nullopt);
    EXPECT_EQ(console.lines().back(), "BrowserURLFetcher: ❌ 无法获取前台应用或Bundle ID");
    console.clear();
    applications.setFrontmost(std::nullopt);
    EXPECT_EQ(fetcher.fetchCurrentURL(), std::nullopt);
    EXPECT_THAT(console.lines(), ElementsAre("BrowserURLFetcher: ❌ 无法获取前台应用或Bundle ID"));
}

TEST_F(BrowserURLFetcherTest, AnAnswerAboutThePermissionHoldsForFiveMinutes) {
    const Date start = runLoop.now();
    const ScriptError refused{-1743, "Not authorized."};
    const std::tuple<Seconds, ScriptResult, bool, int> rows[] = {{0s, "true", true, 1},
                                                                 {299.9s, refused, true, 1},
                                                                 {300s, refused, false, 2},
                                                                 {599.9s, "true", false, 2},
                                                                 {600s, "", true, 3}};
    for (const auto& [after, answer, expected, asked] : rows) {
        SCOPED_TRACE(after.count());
        runLoop.playUntil(start + after);
        permission = answer;
        EXPECT_EQ(fetcher.checkAppleEventsPermission(), expected);
        EXPECT_EQ(runsOf(ScriptFamily::permissionTest), asked);
    }
    EXPECT_THAT(console.lines(), ElementsAre("BrowserURLFetcher: Apple Events permission denied: Not authorized."));
}

}  // namespace
}  // namespace quorvane
