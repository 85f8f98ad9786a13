#include "desktop/support/BoundSocket.h"
#include "desktop/support/BusService.h"
#include "desktop/support/GnomeSession.h"
#include "desktop/support/TerminalWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/gnome/ExtensionSettings.h"
#include "platform/linux/gnome/GnomeExtension.h"
#include "platform/linux/gnome/GnomeToplevels.h"
#include "platform/linux/gnome/MutterReturnSource.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"

#include <csignal>
#include <ctime>

namespace quorvane::platform {
namespace {

using GnomeExtension::State;

/// Windows as a shell with our extension tells of them.
class GnomeTest : public testing::Test {
protected:
    void SetUp() override {
        if (!GnomeSession::isInstalled()) GTEST_SKIP() << "gnome-shell and foot are not installed";
        session = std::make_unique<GnomeSession>([this] { beforeLogin = GnomeExtension::install().state; });
        if (!session->isRunning()) GTEST_SKIP() << "gnome-shell hangs in its own start";
        windows = std::make_unique<GnomeToplevels>(runLoop);
    }

    bool isActive(const TerminalWindow& window, const char* application, const char* title) {
        return waitUntil([&] { return windows->active() == ToplevelWindow{application, title, window.pid()}; });
    }

    QtRunLoop runLoop;
    State beforeLogin{};
    std::unique_ptr<GnomeSession> session;
    std::unique_ptr<GnomeToplevels> windows;
};

TEST_F(GnomeTest, TheExtensionTellsOfTheWindowWithTheFocusUntilItIsRemoved) {
    EXPECT_EQ(beforeLogin, State::afterLogin);
    EXPECT_EQ(GnomeExtension::status().state, State::on);
    EXPECT_TRUE(waitUntil([&] { return windows->channel().isAvailable; }));
    EXPECT_EQ(windows->active(), std::nullopt);
    const TerminalWindow first("first", "one");
    ASSERT_TRUE(isActive(first, "first", "one"));
    auto second = std::make_unique<TerminalWindow>("second", "two");
    ASSERT_TRUE(isActive(*second, "second", "two"));
    session->focus("first");
    ASSERT_TRUE(isActive(first, "first", "one"));
    EXPECT_THAT(windows->all(), testing::UnorderedElementsAre(ToplevelWindow{"first", "", first.pid()},
                                                              ToplevelWindow{"second", "", second->pid()}));
    int changes = 0;
    const auto subscription = windows->observe([&] { ++changes; });
    first.setTitle("three");
    ASSERT_TRUE(isActive(first, "first", "three"));
    EXPECT_EQ(changes, 1);
    session->focus("second");
    ASSERT_TRUE(isActive(*second, "second", "two"));
    second.reset();
    ASSERT_TRUE(isActive(first, "first", "three"));

    const SessionEvents events(runLoop);
    session->logind().requestLock(true);
    EXPECT_TRUE(waitUntil([&] { return events.isOutOfReach() && !windows->active(); })) << "the extension is off";
    EXPECT_EQ(GnomeExtension::status().state, State::stopped);
    session->logind().requestLock(false);
    EXPECT_TRUE(waitUntil([&] { return !events.isOutOfReach(); }));
    EXPECT_TRUE(isActive(first, "first", "three"));

    EXPECT_EQ(GnomeExtension::remove().state, State::notInstalled);
    EXPECT_TRUE(waitUntil([&] { return !windows->active() && !windows->channel().isAvailable; }));
    EXPECT_FALSE(ExtensionSettings::isEnabled(GnomeExtension::uuid, Deadline(3s)));
    EXPECT_TRUE(ExtensionSettings::isEnabled("test@quorvane.com", Deadline(3s))) << "others stay as they are";
    EXPECT_EQ(GnomeExtension::install().state, State::afterLogin);
}

TEST_F(GnomeTest, APauseIsCountedFromItsLastInputAndItsEndIsTold) {
    MutterIdleSource idle(runLoop);
    MutterReturnSource returns(idle);
    session->type();
    int returned = 0;
    const auto early = returns.watch([&] { ++returned; });
    EXPECT_TRUE(waitUntil([&] { return returned == 1; }, 20s)) << "who has just typed is there";
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    EXPECT_LT(idle.secondsSinceLastInput(), 20s);
    const auto watch = returns.watch([&] { ++returned; });
    EXPECT_TRUE(staysTrue([&] { return returned == 1; }));
    session->type();
    EXPECT_TRUE(waitUntil([&] { return returned == 2; }, 20s));
}

TEST_F(GnomeTest, InAPauseNobodyIsAskedUntilInputEndsIt) {
    MutterIdleSource idle(runLoop, 0.5s);
    session->type();
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() < 0.5s; }, 10s));
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    session->send(SIGSTOP);
    const Seconds begin = uptime();
    EXPECT_GT(idle.secondsSinceLastInput(), 1.2s);
    EXPECT_LT(uptime() - begin, 0.1s);
    session->send(SIGCONT);
    MutterReturnSource returns(idle);
    std::optional<Seconds> atReturn;
    const auto watch = returns.watch([&] { atReturn = idle.secondsSinceLastInput(); });
    EXPECT_TRUE(staysTrue([&] { return !atReturn; }));
    session->type();
    EXPECT_TRUE(waitUntil([&] { return atReturn.has_value(); }));
    EXPECT_LT(*atReturn, 0.5s);
    EXPECT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 0.7s; })) << "and the next pause is one";
}

TEST_F(GnomeTest, AShellThatHangsOrEndsHoldsNobodyUpAndIsFoundAgain) {
    MutterIdleSource idle(runLoop);
    MutterReturnSource returns(idle);
    auto window = std::make_unique<TerminalWindow>("first", "one");
    ASSERT_TRUE(isActive(*window, "first", "one"));
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    bool hasReturned = false;
    const auto watch = returns.watch([&] { hasReturned = true; });
    ASSERT_NE(watch, nullptr);
    session->send(SIGSTOP);
    const Seconds begin = uptime();
    const Seconds before = idle.secondsSinceLastInput();
    EXPECT_GE(before, 0s);
    GnomeToplevels other(runLoop);
    EXPECT_LT(uptime() - begin, 0.5s);
    EXPECT_GE(idle.secondsSinceLastInput(), before);
    EXPECT_TRUE(waitUntil([&] { return other.channel().reason == "the extension does not answer"; }));
    session->send(SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return other.active() == windows->active(); }));
    session->kill();
    ASSERT_TRUE(waitUntil([&] { return !windows->active() && !returns.watch([] {}); }, 10s)) << "nobody can tell";
    EXPECT_EQ(windows->channel().obstacle, Obstacle::wayland);
    window.reset();
    if (!session->start()) GTEST_SKIP() << "gnome-shell hangs in its own start";
    const TerminalWindow next("next", "two");
    EXPECT_TRUE(isActive(next, "next", "two"));
    session->type();
    EXPECT_TRUE(waitUntil([&] { return hasReturned; }, 20s)) << "the wait goes on in the new shell";
}

TEST(AbsentGnomeTest, NobodyWaitsForASessionBusThatHangs) {
    QtRunLoop runLoop;
    DesktopSession desktop({.display = false, .windowManager = false, .buses = false});
    const auto path = desktop.runtimeDirectory() / "hanging";
    const BoundSocket hanging(path, SOCK_STREAM, true);
    desktop.environment().set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.string());
    const Seconds begin = uptime();
    EXPECT_EQ(GnomeToplevels(runLoop).channel().reason, "no session bus");
    MutterIdleSource idle(runLoop);
    EXPECT_EQ(idle.secondsSinceLastInput(), -1s);
    EXPECT_FALSE(idle.channel().isAvailable);
    EXPECT_LT(uptime() - begin, 0.8s);
}

/// Somebody else under the extension's name.
class FalseExtensionTest : public testing::Test {
protected:
    static constexpr const char* program = R"(
import dbus, dbus.lowlevel, signal, time
bus = dbus.SessionBus()
bus.request_name('com.quorvane.Focus')
def send(signature, *values):
    message = dbus.lowlevel.SignalMessage('/com/quorvane/Focus', 'com.quorvane.Focus1', 'Changed')
    message.append(*values, signature=signature)
    bus.send_message(message)
    time.sleep(pause)
pause = 0
def window(**more):
    return dict({'app_id': 'a', 'title': 'one', 'pid': dbus.UInt32(7)}, **more)
)";

    [[nodiscard]] static ChildProcess extension(const std::string& code) {
        return ChildProcess({distributionPython(), "-c", program + code + "\nbus.flush()\nsignal.pause()\n"});
    }

    QtRunLoop runLoop;
    DesktopSession desktop{{.display = false, .windowManager = false}};
    GnomeToplevels windows{runLoop};
};

TEST_F(FalseExtensionTest, WhatIsNotOfTheRightTypesIsIgnoredAndLengthsAreBounded) {
    std::vector<std::string> titles;
    const auto subscription =
        windows.observe([&] { titles.push_back(windows.active() ? windows.active()->title : ""); });
    auto liar = extension(R"(
pause = 0.05
send('a{sv}aa{sv}', window(), [window()])
send('s', 'garbage')
send('aa{sv}a{sv}', [window()], window())
send('a{sv}aa{sv}', window(app_id=dbus.Array([1], signature='i')), [])
send('a{sv}aa{sv}', window(), [window(pid='8')])
send('a{sv}aa{sv}', window(title='x' * 1000000, more=dbus.Array([1], signature='i')), [window()]))");
    EXPECT_TRUE(waitUntil([&] { return titles.size() == 2; }, 10s));
    EXPECT_THAT(titles, ElementsAre("one", std::string(4096, 'x')));
    EXPECT_EQ(windows.all(), std::vector({ToplevelWindow{"a", "one", 7}}));
    liar.kill();
    EXPECT_TRUE(waitUntil([&] { return !windows.active() && windows.all().empty(); }));
}

TEST_F(FalseExtensionTest, AFloodOfSignalsCostsNextToNothing) {
    int changes = 0;
    const auto subscription = windows.observe([&] { ++changes; });
    const auto flooding = extension(R"(
until = time.monotonic() + 1
number = 0
while time.monotonic() < until:
    send('a{sv}aa{sv}', window(title=str(number)), [])
    number += 1
bus.flush()
time.sleep(1.2)
send('a{sv}aa{sv}', window(title='the end after %d' % (number > 300)), []))");
    const auto isOver = [&] { return windows.active() && windows.active()->title == "the end after 1"; };
    EXPECT_TRUE(waitUntil(isOver, 15s));
    EXPECT_LT(changes, 500);
    EXPECT_LT(static_cast<double>(std::clock()) / CLOCKS_PER_SEC, 0.4) << "of processor time in all";
}

}  // namespace
}  // namespace quorvane::platform
