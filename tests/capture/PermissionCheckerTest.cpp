#include "capture/PermissionChecker.h"

#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAutomation.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedSession.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const PermissionChecker::TestResult& result, std::ostream* out) {
    *out << static_cast<int>(result.outcome) << ": " << result.detail;
}

namespace {

namespace Name = platform::AccessibleName;
using TestResult = PermissionChecker::TestResult;
using Outcome = TestResult::Outcome;

struct FixedURL : BrowserURLSource {
    std::optional<std::string> url;
    std::optional<std::string> frontURL() override { return url; }
};

class PermissionCheckerTest : public testing::Test {
protected:
    void bringToFront(const std::string& bundleId) {
        applications.setFrontmost(
            platform::RunningApplication{.processIdentifier = 7, .bundleIdentifier = bundleId, .localizedName = "App"});
    }
    /// What a test reports once its worker is done.
    PermissionChecker::TestResult resultOf(void (PermissionChecker::*test)(PermissionChecker::Tested)) {
        PermissionChecker::TestResult found{.detail = "not called"};
        ((*checker).*test)([&](const PermissionChecker::TestResult& result) {
            EXPECT_TRUE(runLoop.isMainThread());
            found = result;
        });
        EXPECT_EQ(found.detail, "not called");
        runLoop.runPosted();
        return found;
    }

    platform::SimulatedRunLoop runLoop{dateFromSecondsSince1970(1'772'611'200)};
    platform::SimulatedAccessibility tree;
    platform::SimulatedAutomation automation;
    platform::SimulatedKeys keys;
    platform::SimulatedSettingsPanes panes;
    platform::SimulatedRunningApplications applications;
    FixedURL browser;
    RecordingConsole console;
    DocumentPathFetcher documents{tree, applications, automation, console};
    std::unique_ptr<PermissionChecker> checker = std::make_unique<PermissionChecker>(
        PermissionChecker::Sources{runLoop, tree, automation, keys, panes, applications, browser, documents, console});
};

TEST_F(PermissionCheckerTest, ReadsThePermissionsATenthOfASecondAfterItsCreation) {
    automation.answer([this](const platform::Script& script) {
        EXPECT_FALSE(runLoop.isMainThread());
        EXPECT_EQ(script.source, "tell application \"System Events\" to return true");
        return platform::ScriptError{-600, "refused"};
    });
    runLoop.playFor(0.099s);
    EXPECT_EQ(checker->currentStatus(), PermissionStatus());
    EXPECT_THAT(console.lines(), IsEmpty());
    runLoop.playFor(0.001s);
    EXPECT_EQ(checker->currentStatus(), (PermissionStatus{.accessibility = true, .inputMonitoring = true}));
    EXPECT_THAT(console.lines(), ElementsAre("PermissionChecker: Accessibility permission: ✅ 已授权",
                                             "PermissionChecker: Apple Events permission: ❌ 未授权",
                                             "PermissionChecker: Input Monitoring permission: ✅ 已授权"));
    EXPECT_EQ(keys.taps(), 0);  // the probe is gone
}

TEST_F(PermissionCheckerTest, ARefreshThatIsUnderWayKeepsAnotherFromStarting) {
    int changes = 0;
    const auto subscription = checker->changed.subscribe([&] { ++changes; });
    runLoop.holdBackground();  // a script that hangs
    checker->refreshPermissions();
    checker->refreshPermissionsAsync();
    runLoop.playFor(1h);
    EXPECT_TRUE(checker->isCheckingPermissions());
    EXPECT_EQ(changes, 1);
    checker->refreshPermissions();
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_THAT(automation.scripts(), SizeIs(1));
    EXPECT_FALSE(checker->isCheckingPermissions());
    EXPECT_EQ(checker->currentStatus(), (PermissionStatus{true, true, true}));
    EXPECT_EQ(changes, 2);

    checker->refreshPermissions();
    runLoop.runPosted();
    EXPECT_THAT(automation.scripts(), SizeIs(2));
}

TEST_F(PermissionCheckerTest, AWorkerPublishesEvenDuringAnotherRefresh) {
    runLoop.background([this] {
        checker->refreshPermissions();
        EXPECT_THAT(automation.scripts(), SizeIs(1));
        EXPECT_EQ(checker->currentStatus(), PermissionStatus());  // not on this thread
    });
    checker->refreshPermissionsAsync();
    runLoop.post([this] { runLoop.holdBackground(); });
    runLoop.runPosted();
    EXPECT_EQ(checker->currentStatus(), (PermissionStatus{true, true, true}));
    EXPECT_TRUE(checker->isCheckingPermissions());
}

TEST_F(PermissionCheckerTest, ARequestIsFollowedByARefreshAfterASecond) {
    tree.setTrusted(false);
    runLoop.playFor(1s);
    console.clear();
    checker->requestAccessibilityPermission();
    EXPECT_EQ(tree.trustRequests(), 1);
    EXPECT_THAT(console.lines(), ElementsAre("PermissionChecker: 正在请求 Accessibility 权限..."));
    tree.setTrusted(true);
    runLoop.playFor(0.9s);
    EXPECT_FALSE(checker->accessibilityPermissionGranted());
    runLoop.playFor(0.1s);
    EXPECT_TRUE(checker->accessibilityPermissionGranted());
    console.clear();
    checker->requestAccessibilityPermission();
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(PermissionCheckerTest, WhatIsUnderWayAtItsEndIsDropped) {
    runLoop.holdBackground();
    bool called = false;
    checker->testDocumentPathFetch([&](const auto&) { called = true; });
    checker->refreshPermissions();
    runLoop.runPosted();
    checker.reset();
    runLoop.releaseBackground();
    runLoop.playFor(2s);
    EXPECT_FALSE(called);
}

TEST_F(PermissionCheckerTest, RefusedKeysAreToldAndThePanesOpen) {
    keys.refuse(true);
    runLoop.playFor(1s);
    EXPECT_FALSE(checker->inputMonitoringPermissionGranted());
    checker->openAccessibilitySettings();
    checker->openAutomationSettings();
    checker->openInputMonitoringSettings();
    const std::string pane = "x-apple.systempreferences:com.apple.preference.security?Privacy_";
    EXPECT_THAT(panes.opened(), ElementsAre(pane + "Accessibility", pane + "Automation", pane + "ListenEvent"));
}

TEST_F(PermissionCheckerTest, TheBrowserTestTellsTheUrlOrWhyThereIsNone) {
    const auto test = [this] { return resultOf(&PermissionChecker::testBrowserURLFetch); };
    EXPECT_EQ(test(), (TestResult{Outcome::nothingInFront}));
    bringToFront("com.vivaldi.Vivaldi");
    EXPECT_EQ(test(), (TestResult{Outcome::noBrowser, "com.vivaldi.Vivaldi"}));
    bringToFront("com.google.Chrome");
    EXPECT_EQ(test(), (TestResult{Outcome::noAddress}));
    browser.url = "https://example.com/";
    for (const char* bundleId : {"com.apple.Safari", "com.google.Chrome", "com.brave.Browser", "com.microsoft.edgemac",
                                 "company.thebrowser.Browser"}) {
        bringToFront(bundleId);
        EXPECT_EQ(test(), (TestResult{Outcome::found, "https://example.com/"})) << bundleId;
    }
}

TEST_F(PermissionCheckerTest, TheDocumentTestTellsTheDocumentOrTheTitleOrWhyThereIsNeither) {
    const auto test = [this] { return resultOf(&PermissionChecker::testDocumentPathFetch); };
    EXPECT_EQ(test(), (TestResult{Outcome::nothingInFront}));
    bringToFront("org.example.editor");
    EXPECT_EQ(test(), (TestResult{Outcome::noDocument}));
    tree.setApplication(7, "app");
    tree.setElement("app", Name::focusedWindow, "window");
    tree.setText("window", Name::title, "notes");
    EXPECT_EQ(test(), (TestResult{Outcome::titleAlone, "notes"}));
    tree.setText("window", Name::document, "/home/ann/notes.txt");
    EXPECT_EQ(test(), (TestResult{Outcome::found, "/home/ann/notes.txt"}));
}

}  // namespace
}  // namespace quorvane
