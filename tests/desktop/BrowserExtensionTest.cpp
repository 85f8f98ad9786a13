#include "browserhost/BrowserSocket.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/browsers/BrowserMessages.h"
#include "platform/linux/loop/QtRunLoop.h"

#include <gmock/gmock.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

constexpr Seconds timeToInstall = 60s;

/// A real browser with the real extension and the real host, which quorvane-cli has told it about.
class BrowserExtensionTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"first", "second"})
            writeFile(pages / (std::string(name) + ".html"), std::string("<title>") + name + " page</title>");
        ASSERT_EQ(run({QUORVANE_CLI, "browser", "install", "--all"}), 0);
        messages = std::make_unique<BrowserMessages>(BrowserSocket::path(), [](const std::string&) {});
        ASSERT_EQ(messages->problem(), "");
    }

    [[nodiscard]] std::string page(const std::string& name) const {
        return "file://" + (pages / (name + ".html")).string();
    }
    [[nodiscard]] bool waitForPage(const std::string& name, Seconds timeout = 20s) {
        return waitUntil([&] { return messages->url(browser->pid(), name + " page - Browser") == page(name); },
                         timeout);
    }
    [[nodiscard]] bool isNothingTold() {
        const auto fits = [&](const std::string& name) {
            return messages->url(browser->pid(), name + " page").has_value();
        };
        return !fits("first") && !fits("second");
    }
    static void press(const std::string& keys) { ASSERT_EQ(run({"xdotool", "key", keys}), 0); }

    /// Two tabs, the first in front; then a private window, and back.
    void goThroughPages(const std::vector<std::string>& command, const std::string& keysForPrivateWindow) {
        browser = std::make_unique<ChildProcess>(command);
        ASSERT_TRUE(waitForPage("first", timeToInstall));
        press("ctrl+Tab");
        ASSERT_TRUE(waitForPage("second"));
        EXPECT_FALSE(messages->url(browser->pid(), "first page").has_value());
        press(keysForPrivateWindow);
        ASSERT_TRUE(waitUntil([&] { return isNothingTold(); }, 20s));
        EXPECT_TRUE(messages->knows(browser->pid()));
        ASSERT_EQ(run({"xdotool", "type", "--delay", "20", page("first") + "\n"}), 0);
        EXPECT_TRUE(staysTrue([&] { return isNothingTold(); }, 2s));
        press("ctrl+w");
        EXPECT_TRUE(waitForPage("second"));
        const auto process = browser->pid();
        browser.reset();
        EXPECT_TRUE(waitUntil([&] { return !messages->knows(process); }));
    }

    QtRunLoop runLoop;
    DesktopSession session;
    TemporaryFolder pages;
    TemporaryFolder profile;
    std::unique_ptr<BrowserMessages> messages;
    std::unique_ptr<ChildProcess> browser;
};

TEST_F(BrowserExtensionTest, ChromiumTellsItsPageAndNothingOfAPrivateWindow) {
    if (access("/usr/bin/chromium", X_OK) != 0) GTEST_SKIP() << "chromium is not installed";
    goThroughPages({"chromium", "--no-sandbox", "--disable-gpu", "--no-first-run", "--password-store=basic",
                    std::string("--load-extension=") + QUORVANE_BROWSER_EXTENSION, page("first"), page("second")},
                   "ctrl+shift+n");
}

TEST_F(BrowserExtensionTest, FirefoxTellsItsPageAndNothingOfAPrivateWindow) {
    if (access("/usr/bin/firefox-esr", X_OK) != 0) GTEST_SKIP() << "firefox-esr is not installed";
    writeFile(profile / "user.js", R"(
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("extensions.autoDisableScopes", 0);
user_pref("termsofuse.bypassNotification", true);
user_pref("xpinstall.signatures.required", false);
)");
    std::filesystem::create_directory(profile / "extensions");
    std::filesystem::copy(QUORVANE_BROWSER_EXTENSION "/../tabs@quorvane.zelkor.xpi", profile / "extensions");
    goThroughPages({"firefox-esr", "--no-remote", "--profile", profile.path().string(), page("first"), page("second")},
                   "ctrl+shift+p");
}

}  // namespace
}  // namespace quorvane::platform
