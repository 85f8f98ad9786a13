#include "desktop/support/KWinSession.h"
#include "desktop/support/Waiting.h"
#include "desktop/support/WaylandWindow.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/kde/KWinScriptToplevels.h"
#include "platform/linux/kde/PlasmaGrant.h"
#include "platform/linux/kde/PlasmaToplevels.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/wayland/WaylandIdleSource.h"
#include "support/Matching.h"

#include <fake-input-client.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QRegularExpression>
#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace quorvane::platform {
namespace {

/// How many scripts KWin has, in the way of its version.
qsizetype scripts() {
    auto session = DBusConnection::toSession();
    qsizetype count = 0;
    for (const char* path : {"/", "/Scripting"}) {
        const auto answer = session.bus().call(
            QDBusMessage::createMethodCall("org.kde.KWin", path, "org.freedesktop.DBus.Introspectable", "Introspect"));
        count += answer.arguments().value(0).toString().count(QRegularExpression("node name=\"(Script)?[0-9]+\""));
    }
    return count;
}

/// Tells everybody on the bus of a window that isn't there, as only KWin may. How many believed it.
qsizetype believersOfAStranger() {
    auto session = DBusConnection::toSession();
    const QStringList names = session.bus().interface()->registeredServiceNames();
    return std::count_if(names.begin(), names.end(), [&](const QString& name) {
        auto lie = QDBusMessage::createMethodCall(name, "/Windows", "com.quorvane.Windows1", "Show");
        lie << R"({"front": {"app": "liar", "title": "lie", "pid": 1}, "windows": []})";
        return session.bus().call(lie, QDBus::BlockWithGui, 5000).type() == QDBusMessage::ReplyMessage;
    });
}

class KdeTest : public testing::Test {
protected:
    void SetUp() override {
        if (!KWinSession::isThere()) GTEST_SKIP() << "kwin_wayland is not installed (Debian: kwin-wayland)";
    }

    /// The titles in front one after the other, "-" for none.
    void note(const ToplevelWindows& windows) {
        const auto active = windows.active();
        auto title = active ? active->title : "-";
        if (titles.empty() || titles.back() != title) titles.push_back(std::move(title));
    }
    bool comes(const char* title) {
        return waitUntil([&] { return !titles.empty() && titles.back() == title; });
    }

    void expectToFollow(const KWinSession& session, ToplevelWindows& windows) {
        const auto subscription = windows.observe([&] { note(windows); });
        auto first = std::make_unique<WaylandWindow>(runLoop, "org.example.first", "one");
        ASSERT_TRUE(comes("one"));
        EXPECT_EQ(windows.active(), (ToplevelWindow{"org.example.first", "one", getpid()}));
        auto second = std::make_unique<WaylandWindow>(runLoop, "org.example.second", "two");
        ASSERT_TRUE(comes("two"));
        session.focus("org.example.first");
        ASSERT_TRUE(comes("one"));
        first->setTitle("three");
        ASSERT_TRUE(comes("three"));
        EXPECT_EQ(windows.all().size(), 2U);
        session.focus("org.example.second");
        ASSERT_TRUE(comes("two"));
        second.reset();
        ASSERT_TRUE(comes("three"));
        EXPECT_EQ(windows.all().size(), 1U);
        first.reset();
        ASSERT_TRUE(comes("-"));
        EXPECT_THAT(titles, ElementsAre("one", "two", "one", "three", "two", "three", "-"));
        EXPECT_TRUE(windows.channel().isAvailable) << windows.channel().reason;
        titles.clear();
    }
    void expectToFollowAfterARestart(KWinSession& session, ToplevelWindows& windows) {
        session.kill();
        ASSERT_TRUE(waitUntil([&] { return !windows.channel().isAvailable; }));
        session.start();
        ASSERT_TRUE(waitUntil([&] { return windows.channel().isAvailable; }, 10s));
        expectToFollow(session, windows);
    }

    QtRunLoop runLoop;
    std::vector<std::string> titles;
};

TEST_F(KdeTest, WhoHasAGrantFollowsTheFocusAlsoAfterARestartOfKWin) {
    KWinSession session;
    ASSERT_EQ(PlasmaGrant("/proc/self/exe").install(), std::nullopt);
    WaylandConnection connection(&runLoop);
    PlasmaToplevels windows(connection);
    expectToFollow(session, windows);
    session.send(SIGSTOP);
    const Seconds begin = uptime();
    EXPECT_FALSE(connection.settle());
    EXPECT_LT(uptime() - begin, 0.6s);
    expectToFollowAfterARestart(session, windows);
}

TEST_F(KdeTest, WhoHasNoGrantIsToldSoAndFollowsTheFocusByAScript) {
    KWinSession session;
    WaylandConnection connection(&runLoop);
    EXPECT_THAT(PlasmaToplevels(connection).channel().reason, HasSubstr("desktop file"));
    KWinScriptToplevels windows(runLoop);
    expectToFollow(session, windows);
    expectToFollowAfterARestart(session, windows);
}

TEST_F(KdeTest, TheScriptIsTakenOutAgainBelievesKWinAloneAndWaitsForNobody) {
    const KWinSession session;
    auto windows = std::make_unique<KWinScriptToplevels>(runLoop);
    ASSERT_TRUE(waitUntil([&] { return windows->channel().isAvailable; }));
    EXPECT_EQ(scripts(), 1);
    EXPECT_EQ(believersOfAStranger(), 0);
    EXPECT_EQ(windows->active(), std::nullopt);
    session.send(SIGSTOP);
    const auto remake = [&] {
        const Seconds begin = uptime();
        windows.reset();
        windows = std::make_unique<KWinScriptToplevels>(runLoop);
        EXPECT_FALSE(windows->channel().isAvailable);
        return uptime() - begin;
    };
    EXPECT_LT(remake(), 0.5s);
    session.bus().send(SIGSTOP);
    EXPECT_LT(remake(), 0.5s);
    session.bus().send(SIGCONT);
    session.send(SIGCONT);
    remake();
    ASSERT_TRUE(waitUntil([&] { return windows->channel().isAvailable; }));
    windows.reset();
    EXPECT_EQ(scripts(), 0);
}

TEST_F(KdeTest, TheLockScreenPutsTheSessionOutOfReach) {
    KWinSession session;
    const SessionEvents events(runLoop);
    session.lock();
    EXPECT_TRUE(waitUntil([&] { return events.isOutOfReach(); }));
    session.kill();
    EXPECT_TRUE(waitUntil([&] { return !events.isOutOfReach(); }));
}

TEST(PlasmaGrantTest, OnlyADesktopFileThatRunsTheProgramByItsFullPathAndAsksCounts) {
    const TemporaryFolder folder;
    Environment environment;
    environment.set("XDG_DATA_HOME", folder / "user");
    environment.set("XDG_DATA_DIRS", folder / "system");
    std::filesystem::create_directories(folder / "system/applications");
    writeFile(folder / "my program", "");
    const auto path = (folder / "my program").string();
    const PlasmaGrant grant(path);
    const std::string asks = "X-KDE-Wayland-Interfaces=org_kde_kwin_keystate,org_kde_plasma_window_management\n";
    const std::tuple<const char*, std::string, std::string, bool> rows[] = {
        {"none", "", "no desktop file", true},
        {"bare name", "Exec=program\n" + asks, "no desktop file", true},
        {"elsewhere", "Exec=/usr/bin/true\n" + asks, "no desktop file", true},
        {"asks", "Exec=\"" + path + "\" %u\n" + asks, "", false},
        {"only elsewhere", "OnlyShowIn=GNOME;\nExec=\"" + path + "\"\n" + asks, "no desktop file", true},
        {"is silent", "Exec=\"" + path + "\"\n", "no desktop file", false},
    };
    for (const auto& [name, lines, problem, isWritten] : rows) {
        SCOPED_TRACE(name);
        writeFile(folder / "system/applications/menu.desktop", "[Desktop Entry]\nType=Application\nName=P\n" + lines);
        const bool isGranted = problem.empty();
        EXPECT_EQ(grant.problem().empty(), isGranted);
        EXPECT_THAT(grant.problem(), HasSubstr(problem));
        const auto hindrance = grant.install();
        EXPECT_EQ(std::filesystem::exists(grant.file()), isWritten);
        EXPECT_EQ(grant.problem().empty(), isWritten || isGranted);
        EXPECT_EQ(hindrance.has_value(), !grant.problem().empty());
        EXPECT_EQ(grant.remove(), std::nullopt);
        EXPECT_EQ(grant.problem().empty(), isGranted);
    }
}

TEST_F(KdeTest, APauseIsCountedFromItsLastInputAndItsEndIsTold) {
    const KWinSession session(true);
    WaylandConnection connection(&runLoop);
    auto* input = connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
    ASSERT_NE(input, nullptr);
    org_kde_kwin_fake_input_authenticate(input, "a test", "to move the pointer");
    WaylandIdleSource idle(runLoop, connection);
    int returns = 0;
    const auto subscription = idle.observeReturn([&] { ++returns; });
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    EXPECT_LT(idle.secondsSinceLastInput(), 3s);
    org_kde_kwin_fake_input_pointer_motion(input, wl_fixed_from_int(5), 0);
    connection.settle();
    EXPECT_TRUE(waitUntil([&] { return returns == 1; }));
    EXPECT_EQ(idle.secondsSinceLastInput(), 0s);
    org_kde_kwin_fake_input_destroy(input);
}

}  // namespace
}  // namespace quorvane::platform
