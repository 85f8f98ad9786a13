#include "desktop/support/BoundSocket.h"
#include "desktop/support/SwaySession.h"
#include "desktop/support/TerminalWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "platform/linux/wayland/SwayToplevels.h"
#include "platform/linux/wayland/WaylandIdleSource.h"
#include "platform/linux/wayland/WlrToplevels.h"
#include "support/Matching.h"

#include <QJsonObject>
#include <QStandardPaths>
#include <csignal>

namespace quorvane::platform {
namespace {

class WaylandTest : public testing::Test {
protected:
    bool isActive(const char* appId, const char* title) {
        return waitUntil([&] { return windows.active() == ToplevelWindow{.appId = appId, .title = title}; });
    }

    QtRunLoop runLoop;
    SwaySession session;
    WaylandConnection connection{&runLoop};
    WlrToplevels windows{connection};
};

TEST_F(WaylandTest, TheWindowWithTheFocusIsKnownWithItsTitleAndNoOther) {
    EXPECT_EQ(windows.active(), std::nullopt);
    int changes = 0;
    const auto subscription = windows.observe([&] { ++changes; });
    const TerminalWindow first("first", "one");
    ASSERT_TRUE(isActive("first", "one"));
    auto second = std::make_unique<TerminalWindow>("second", "two");
    ASSERT_TRUE(isActive("second", "two"));
    session.focus("first");
    ASSERT_TRUE(isActive("first", "one"));
    const int changesBefore = changes;
    first.setTitle("three");
    ASSERT_TRUE(isActive("first", "three"));
    EXPECT_EQ(changes, changesBefore + 1);
    session.focus("second");
    ASSERT_TRUE(isActive("second", "two"));
    second.reset();
    EXPECT_TRUE(isActive("first", "three"));
    EXPECT_TRUE(windows.channel().isAvailable);
}

TEST_F(WaylandTest, ThatNoWindowHasTheFocusAnyMoreIsTold) {
    LinuxDesktop desktop(runLoop);
    int vacancies = 0;
    const auto vacated = desktop.foreground().observeVacancy([&] { ++vacancies; });
    auto window = std::make_unique<TerminalWindow>("first", "one");
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostApplication().has_value(); }));
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return vacancies == 1; }));
}

TEST_F(WaylandTest, APauseIsCountedFromItsLastInputAndItsEndIsTold) {
    WaylandIdleSource idle(runLoop, connection);
    int returns = 0;
    const auto subscription = idle.observeReturn([&] { ++returns; });
    const TerminalWindow window("first", "one");
    ASSERT_EQ(run({"wtype", "-s", "10", "a"}), 0);
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    EXPECT_LT(idle.secondsSinceLastInput(), 3s);
    ASSERT_EQ(run({"wtype", "-s", "10", "a"}), 0);
    ASSERT_TRUE(waitUntil([&] { return returns == 1; }));
    EXPECT_EQ(idle.secondsSinceLastInput(), 0s);
    EXPECT_TRUE(idle.channel().isAvailable);
}

TEST_F(WaylandTest, ACompositorThatEndsOrHangsHoldsNobodyUpAndIsFoundAgain) {
    auto window = std::make_unique<TerminalWindow>("first", "one");
    ASSERT_TRUE(isActive("first", "one"));
    session.send(SIGSTOP);
    const Seconds begin = uptime();
    EXPECT_FALSE(connection.settle());
    EXPECT_LT(uptime() - begin, 0.6s);
    session.send(SIGCONT);
    session.kill();
    ASSERT_TRUE(waitUntil([&] { return !windows.active(); }));
    EXPECT_FALSE(windows.channel().isAvailable);
    window.reset();
    session.start();
    const TerminalWindow next("next", "two");
    ASSERT_TRUE(waitUntil([&] { return windows.channel().isAvailable; }, 10s));
    EXPECT_TRUE(isActive("next", "two"));
}

/// Ends the test's own connection to this socket, as if the other end had.
void cutConnectionTo(const std::string& path) {
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
        sockaddr_un peer{};
        socklen_t size = sizeof peer;
        if (getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) == 0 && path == peer.sun_path)
            shutdown(descriptor, SHUT_RDWR);
    }
}

TEST_F(WaylandTest, SwayTellsWhoseEachWindowIsAndASwitchOnce) {
    const auto ipc = (session.folder() / "ipc").string();
    SwayToplevels sway(runLoop, connection, ipc);
    const TerminalWindow first("foot", "one");
    const ToplevelWindow one{"foot", "one", first.pid()};
    ASSERT_TRUE(waitUntil([&] { return sway.active() == one; }));
    const TerminalWindow second("foot", "two");
    const ToplevelWindow two{"foot", "two", second.pid()};
    ASSERT_TRUE(waitUntil([&] { return sway.active() == two; }));
    EXPECT_THAT(sway.channel().name, testing::EndsWith("with sway's IPC"));
    EXPECT_EQ(SwayToplevels(runLoop, connection, ipc).active(), two) << "known from the start";
    std::vector<std::optional<ToplevelWindow>> told;
    const auto subscription = sway.observe([&] { told.push_back(sway.active()); });
    for (const char* title : {"one", "two", "one"}) {
        session.focusTitled(title);
        ASSERT_TRUE(waitUntil([&] { return sway.active()->title == title; }));
    }
    EXPECT_THAT(told, ElementsAre(one, two, one));
    cutConnectionTo(ipc);
    EXPECT_TRUE(waitUntil([&] { return sway.active() == ToplevelWindow{"foot", "one"}; }));
    session.focusTitled("two");
    EXPECT_TRUE(waitUntil([&] { return sway.active() == ToplevelWindow{"foot", "two"}; }));
    session.kill();
    session.start();
    const TerminalWindow next("next", "three");
    EXPECT_TRUE(waitUntil([&] { return sway.active() == ToplevelWindow{"next", "three", next.pid()}; }, 10s));
}

TEST_F(WaylandTest, WhoeverElseListensWhereSwayShouldIsNotAsked) {
    const BoundSocket stranger(session.folder() / "stranger", SOCK_STREAM, true);
    const SwayToplevels sway(runLoop, connection, (session.folder() / "stranger").string());
    const TerminalWindow window("foot", "one");
    EXPECT_TRUE(waitUntil([&] { return sway.active() == ToplevelWindow{"foot", "one"}; }));
    EXPECT_THAT(sway.channel().name, testing::Not(HasSubstr("IPC")));
}

TEST(SwayIpcTest, WhatSwayWouldNotSayEndsTheConversation) {
    QtRunLoop runLoop;
    const TemporaryFolder folder;
    const auto message = [](char length, const std::string& content) {
        return "i3-ipc" + std::string{length, 0, 0, length > 9, 4, 0, 0, 0} + content;
    };
    const std::string answer = message(2, "{}");
    const std::string closes;
    for (const std::string& said :
         {std::string("HTTP/1.1 400 Bad Request"), message(10, ""), message(2, "[1"), closes}) {
        const BoundSocket sway(folder / "ipc", SOCK_STREAM, true);
        int heard = 0;
        int ends = 0;
        SwayIpc ipc((folder / "ipc").string(), getpid(), [&](auto, const auto&) { ++heard; }, [&] { ++ends; });
        ipc.ask(SwayIpc::Message::tree);
        const int descriptor = accept(sway.descriptor(), nullptr, nullptr);
        const std::string bytes = answer + answer + said;
        EXPECT_EQ(send(descriptor, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
        if (said == closes) close(descriptor);
        EXPECT_TRUE(waitUntil([&] { return ends == 1; })) << said;
        EXPECT_EQ(heard, 2);
        EXPECT_FALSE(ipc.isConnected());
        if (said != closes) close(descriptor);
        std::filesystem::remove(folder / "ipc");
    }
}

TEST(XWaylandTest, AWindowOfX11IsOneAmongTheOthers) {
    for (const char* program : {"Xwayland", "xterm"})
        if (QStandardPaths::findExecutable(program).isEmpty()) GTEST_SKIP() << program << " is not installed";
    QtRunLoop runLoop;
    const SwaySession session(true);
    LinuxDesktop desktop(runLoop);
    std::vector<std::string> activations;
    const auto activated = desktop.foreground().observeActivation(
        [&](const auto& application) { activations.push_back(application->localizedName.value_or("")); });
    const auto isInFront = [&](const char* title) {
        return waitUntil([&] { return desktop.foreground().frontmostWindowTitle() == title; }, 10s);
    };
    const TerminalWindow foot("foot", "one");
    ASSERT_TRUE(isInFront("one"));
    session.exec("xterm -T two -e sleep 60");
    ASSERT_TRUE(isInFront("two"));
    const auto front = desktop.runningApplications().frontmost();
    EXPECT_EQ(front->bundleIdentifier, "debian-xterm");
    EXPECT_EQ(contentOf("/proc/" + std::to_string(front->processIdentifier) + "/comm"), "xterm\n");
    for (const char* title : {"one", "two", "one"}) {
        session.focusTitled(title);
        ASSERT_TRUE(isInFront(title));
    }
    EXPECT_THAT(activations, ElementsAre("Foot", "XTerm", "Foot", "XTerm", "Foot"));
}

}  // namespace
}  // namespace quorvane::platform
