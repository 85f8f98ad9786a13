#include "desktop/support/AccessibilityService.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"

#include <unistd.h>

namespace quorvane::platform {
namespace {

constexpr Seconds timeToStart = 60s;
constexpr Seconds timeToLoad = 20s;

/// A browser with a profile of its own, and pages in files: a page's title is its name, and a click leads to "next".
class BrowserPagesTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"first", "second", "next", "secret"})
            writeFile(pages / (std::string(name) + ".html"),
                      std::string("<title>") + name +
                          "</title><html style=\"height:100%\" onclick=\"location='next.html'\">" + name);
        ASSERT_TRUE(tree.requestTrust()) << "before the browser starts, as Chromium looks only then";
    }

    [[nodiscard]] std::string page(const std::string& name) const {
        return "file://" + (pages / (name + ".html")).string();
    }
    [[nodiscard]] std::optional<AccessibleElement> window() {
        const auto application = tree.application(browser->pid());
        const auto focused = elementAt(tree, application, AccessibleName::focusedWindow);
        return focused ? focused : elementAt(tree, application, AccessibleName::mainWindow);  // Chromium's isn't active
    }
    [[nodiscard]] std::string title() { return textAt(tree, window(), AccessibleName::title).value_or(""); }

    [[nodiscard]] bool waitForPage(const std::string& name, Seconds timeout = timeToLoad) {
        return waitUntil([&] { return textAt(tree, window(), AccessibleName::url) == page(name); }, timeout);
    }
    [[nodiscard]] bool waitForTitle(const std::string& start) {
        return waitUntil([&] { return title().starts_with(start); }, timeToLoad);
    }

    /// In the active window.
    void press(const std::string& keys) { ASSERT_EQ(run({"xdotool", "key", keys}), 0); }

    /// In the middle of the screen, again and again: a browser that is busy shows a page before it listens to clicks.
    [[nodiscard]] bool clickUntilPage(const std::string& name) {
        for (int attempt = 0; attempt < 10; ++attempt) {
            if (run({"xdotool", "mousemove", "400", "400", "click", "1"}) != 0) return false;
            if (waitForPage(name, 3s)) return true;
        }
        return false;
    }

    [[nodiscard]] std::optional<AccessibleElement> pageByWalking() {
        const auto from = window();
        return from ? descendantWithRole(tree, *from, AccessibleName::webAreaRole) : std::nullopt;
    }

    /// The page itself tells the same as its window, and where it lies is marked as a URL.
    void expectPageIsFoundByWalking(const std::string& name) {
        const auto area = pageByWalking();
        ASSERT_TRUE(area);
        EXPECT_EQ(tree.attribute(*area, AccessibleName::url), AccessibleValue(AccessibleText{page(name), true}));
        EXPECT_EQ(textAt(tree, window(), AccessibleName::document), page(name));
    }

    void expectNothingIsTold() {
        ASSERT_TRUE(waitUntil([&] { return pageByWalking().has_value(); }));
        EXPECT_TRUE(staysTrue([&] {
            const auto area = pageByWalking();
            return !textAt(tree, window(), AccessibleName::url) && !textAt(tree, window(), AccessibleName::document) &&
                   !textAt(tree, area, AccessibleName::url) && !textAt(tree, area, AccessibleName::value);
        }));
    }

    QtRunLoop runLoop;
    DesktopSession session;
    AccessibilityService service{session};
    TemporaryFolder pages;
    TemporaryFolder profile;
    AtspiAccessibility tree;
    std::unique_ptr<ChildProcess> browser;
};

TEST_F(BrowserPagesTest, FirefoxTellsItsPageAndNothingOfAPrivateWindow) {
    if (access("/usr/bin/firefox-esr", X_OK) != 0) GTEST_SKIP() << "firefox-esr is not installed";
    writeFile(profile / "user.js", R"(
user_pref("app.normandy.enabled", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
)");
    const auto firefox = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"firefox-esr", "--profile", profile.path().string()});
        return arguments;
    };
    browser = std::make_unique<ChildProcess>(firefox({page("first")}));
    ASSERT_TRUE(waitForPage("first", timeToStart));
    expectPageIsFoundByWalking("first");

    ASSERT_EQ(run(firefox({"--new-tab", page("second")})), 0);
    EXPECT_TRUE(waitForPage("second"));
    press("alt+1");
    EXPECT_TRUE(waitForPage("first"));
    EXPECT_TRUE(clickUntilPage("next"));

    ASSERT_EQ(run(firefox({"--private-window", page("secret")})), 0);
    ASSERT_TRUE(waitForTitle("secret"));
    EXPECT_THAT(title(), HasSubstr("Private"));
    expectNothingIsTold();
    press("ctrl+w");
    EXPECT_TRUE(waitForPage("next"));
}

TEST_F(BrowserPagesTest, ChromiumTellsItsPageAndNothingOfAPrivateWindow) {
    if (access("/usr/bin/chromium", X_OK) != 0) GTEST_SKIP() << "chromium is not installed";
    const auto chromium = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"chromium", "--no-sandbox", "--disable-gpu", "--no-first-run", "--password-store=basic",
                          "--force-renderer-accessibility", "--user-data-dir=" + profile.path().string()});
        return arguments;
    };
    browser = std::make_unique<ChildProcess>(chromium({page("first")}));
    ASSERT_TRUE(waitForPage("first", timeToStart));
    expectPageIsFoundByWalking("first");

    ASSERT_EQ(run(chromium({page("second")})), 0);
    EXPECT_TRUE(waitForPage("second"));
    press("alt+1");
    EXPECT_TRUE(waitForPage("first"));

    browser.reset();
    browser = std::make_unique<ChildProcess>(chromium({"--incognito", page("secret")}));
    ASSERT_TRUE(waitForTitle("secret"));
    EXPECT_THAT(title(), HasSubstr("Incognito"));
    expectNothingIsTold();
}

}  // namespace
}  // namespace quorvane::platform
