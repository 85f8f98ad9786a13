#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

using Application = std::optional<ForegroundApplication>;

Application application(const std::string& bundleIdentifier, const std::string& name) {
    return ForegroundApplication{.bundleIdentifier = bundleIdentifier, .localizedName = name};
}

/// A session with the desktop under test and a list of the activations that it reported.
class ForegroundTest : public testing::Test {
protected:
    [[nodiscard]] bool waitForFront(const Application& expected) {
        return waitUntil([&] { return desktop.foreground().frontmostApplication() == expected; });
    }
    [[nodiscard]] Channel channel() { return desktop.foreground().channel(); }

    QtRunLoop runLoop;
    DesktopSession session;
    LinuxDesktop desktop{runLoop};
    std::vector<Application> activations;
    std::vector<Seconds> times;
    Subscription subscription = desktop.foreground().observeActivation([this](const Application& activated) {
        activations.push_back(activated);
        times.push_back(uptime());
    });
};

TEST_F(ForegroundTest, AnActivationIsReportedWithinATenthOfASecond) {
    TestWindow first({.instance = "first", .wmClass = "First"});
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 1; }));
    TestWindow second({.instance = "second", .wmClass = "Second"});
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 2; }));
    for (TestWindow* window : {&first, &second, &first}) {
        const auto asked = uptime();
        const auto before = activations.size();
        window->activate();
        ASSERT_TRUE(waitUntil([&] { return activations.size() > before; }));
        EXPECT_THAT((times.back() - asked).count(), Lt(0.1));
    }
    EXPECT_THAT(activations, ElementsAre(application("first", "First"), application("second", "Second"),
                                         application("first", "First"), application("second", "Second"),
                                         application("first", "First")));
}

TEST_F(ForegroundTest, AnApplicationHasTheNamesOfItsDesktopFileAndAWellKnownOneTheIdentifierOfItsCounterpart) {
    ChildProcess xterm({"xterm", "-T", "build log", "-e", "sleep", "60"});
    ASSERT_TRUE(waitForFront(application("debian-xterm", "XTerm")));
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), "build log");
    ASSERT_TRUE(waitUntil([&] { return !activations.empty(); }));
    EXPECT_THAT(activations, ElementsAre(application("debian-xterm", "XTerm")));

    std::filesystem::create_directories(session.dataHome() / "applications");
    writeFile(session.dataHome() / "applications/firefox-esr.desktop",
              "[Desktop Entry]\nType=Application\nName=Firefox ESR\nExec=firefox-esr %u\nStartupWMClass=firefox-esr\n");
    const TestWindow window({.instance = "Navigator", .wmClass = "firefox-esr"});
    EXPECT_TRUE(waitForFront(application("org.mozilla.firefox", "Firefox ESR")));
}

const ForegroundApplication thisProcess{.localizedName = "quorvane_desktop_test"};

TEST_F(ForegroundTest, WindowsThatSayLittleAreNamedByWhatTheySay) {
    {
        const TestWindow window({.gtkApplicationId = "org.example.Unknown"});
        EXPECT_TRUE(waitForFront(thisProcess));
    }
    ASSERT_TRUE(waitForFront(std::nullopt));
    const TestWindow window({.machine = "elsewhere"});
    EXPECT_TRUE(waitForFront(ForegroundApplication{}));
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), std::nullopt);
}

TEST_F(ForegroundTest, AWindowThatIntroducesItselfLateIsReportedWithItsName) {
    TestWindow window({});
    ASSERT_TRUE(waitForFront(thisProcess));
    const auto introduction = runLoop.after(0.08s, [&] { window.setClass("late", "Late"); });
    ASSERT_TRUE(waitUntil([&] { return !activations.empty(); }));
    EXPECT_THAT(activations, ElementsAre(application("late", "Late")));
}

TEST_F(ForegroundTest, TitlesArriveAsUtf8) {
    const std::tuple<const char*, TestWindow::Properties, std::string> rows[] = {
        {"modern",
         {.instance = "a", .wmClass = "A", .title = "Bericht – März.odt", .oldTitle = "x"},
         "Bericht – März.odt"},
        {"old", {.instance = "b", .wmClass = "B", .oldTitle = "M\xe4rz"}, "März"},
        {"broken", {.instance = "c", .wmClass = "C", .title = "M\xe4rz"}, "M\xef\xbf\xbdrz"},
    };
    for (const auto& [name, properties, expected] : rows) {
        SCOPED_TRACE(name);
        const TestWindow window(properties);
        EXPECT_TRUE(waitUntil([&, &title = expected] { return desktop.foreground().frontmostWindowTitle() == title; }));
    }
}

TEST_F(ForegroundTest, WithoutAFocusedWindowThereIsNoApplication) {
    EXPECT_EQ(desktop.foreground().frontmostApplication(), std::nullopt);
    TestWindow window({.instance = "only", .wmClass = "Only", .title = "title"});
    ASSERT_TRUE(waitForFront(application("only", "Only")));
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 1; }));
    window.iconify();
    ASSERT_TRUE(waitForFront(std::nullopt));
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), std::nullopt);
    ASSERT_TRUE(staysTrue([&] { return activations.size() == 1; }));
    window.activate();
    EXPECT_TRUE(waitUntil([&] { return activations.size() == 2; })) << "it comes back to the front";
    window.destroy();
    EXPECT_TRUE(waitForFront(std::nullopt)) << "some window managers keep the id of a dead window";
}

TEST_F(ForegroundTest, TheLastWindowsEndIsReportedAndAPassageThroughNoneIsNot) {
    int vacancies = 0;
    const auto vacated = desktop.foreground().observeVacancy([&] { ++vacancies; });
    TestWindow first({.instance = "first", .wmClass = "First"});
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 1; }));
    {
        const TestWindow second({.instance = "second", .wmClass = "Second"});
        ASSERT_TRUE(waitUntil([&] { return activations.size() == 2; }));
    }
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 3; })) << "the focus falls back";
    EXPECT_EQ(vacancies, 0);
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"minimised", [&] { first.iconify(); }},
        {"hidden", [&] { first.hide(); }},
        {"gone", [&] { first.destroy(); }},
    };
    for (const auto& [name, end] : ends) {
        SCOPED_TRACE(name);
        if (vacancies > 0) {
            const auto before = activations.size();
            first.show();
            first.activate();
            ASSERT_TRUE(waitUntil([&] { return activations.size() > before; }));
        }
        const auto before = vacancies;
        end();
        EXPECT_TRUE(waitUntil([&] { return vacancies > before; }));
        EXPECT_EQ(desktop.foreground().frontmostApplication(), std::nullopt);
    }
    EXPECT_EQ(vacancies, 3);
}

TEST_F(ForegroundTest, ABurstOfChangesIsReportedOnceAndAnotherWindowOfTheSameApplicationNever) {
    TestWindow first({.instance = "first", .wmClass = "First"});
    TestWindow second({.instance = "second", .wmClass = "Second"});
    ASSERT_TRUE(waitForFront(application("second", "Second")));
    ASSERT_TRUE(
        waitUntil([&] { return !activations.empty() && activations.back() == application("second", "Second"); }));
    activations.clear();
    for (int i = 0; i < 10; ++i) {
        first.activate();
        second.activate();
    }
    first.activate();
    ASSERT_TRUE(waitUntil([&] { return !activations.empty(); }));
    EXPECT_TRUE(staysTrue([&] { return activations.size() == 1; }));
    EXPECT_THAT(activations, ElementsAre(application("first", "First")));
    TestWindow twin({.instance = "first", .wmClass = "First", .title = "two"});
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostWindowTitle() == "two"; }));
    EXPECT_TRUE(staysTrue([&] { return activations.size() == 1; }));
}

TEST(EarlyForegroundTest, AWindowManagerThatStartsLaterIsFollowedAndMissedOnceItHasEnded) {
    QtRunLoop runLoop;
    DesktopSession session({.windowManager = false, .buses = false});
    LinuxDesktop early(runLoop);
    EXPECT_FALSE(early.foreground().channel().isAvailable);
    EXPECT_THAT(early.foreground().channel().reason, HasSubstr("window manager"));
    EXPECT_THAT(early.foreground().channel().remedy, Not(IsEmpty()));
    session.startWindowManager();
    EXPECT_TRUE(early.foreground().channel().isAvailable);
    const TestWindow window({.instance = "late", .wmClass = "Late"});
    EXPECT_TRUE(waitUntil([&] { return early.foreground().frontmostApplication() == application("late", "Late"); }));
    session.killWindowManager();
    EXPECT_TRUE(waitUntil([&] { return !early.foreground().channel().isAvailable; }));
}

TEST(LockedForegroundTest, UnderALockTheLoginWindowIsInFront) {
    QtRunLoop runLoop;
    const DesktopSession session;
    LogindMock logind;
    LinuxDesktop desktop(runLoop);
    std::vector<Application> activations;
    const auto subscription =
        desktop.foreground().observeActivation([&](const Application& activated) { activations.push_back(activated); });
    const TestWindow window({.instance = "editor", .wmClass = "Editor", .title = "secret"});
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 1; }));

    logind.setLockedHint(true);
    const auto loginWindow = application("com.apple.loginwindow", "LoginWindow");
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostApplication() == loginWindow; }));
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), std::nullopt);
    {
        const TestWindow below({.instance = "mail", .wmClass = "Mail"});
        EXPECT_TRUE(staysTrue([&] { return activations.size() == 1; }))
            << "what happens below the lock is no activation";
    }
    ASSERT_TRUE(waitUntil([&] { return window.hasFocus(); }));
    ASSERT_TRUE(staysTrue([&] { return activations.size() == 1; }));
    logind.setLockedHint(false);
    ASSERT_TRUE(waitUntil([&] { return activations.size() == 2; })) << "the lock gives way to the application";
    EXPECT_EQ(activations.back(), application("editor", "Editor"));
}

}  // namespace
}  // namespace quorvane::platform
