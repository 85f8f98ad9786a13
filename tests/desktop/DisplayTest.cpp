#include "desktop/support/BoundSocket.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/bus/LogindSession.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "support/Matching.h"

#include <csignal>

namespace quorvane::platform {
namespace {

using testing::Field;

/// Nothing about windows and input is answered, and nobody crashes for it.
void expectNothingIsSeen(LinuxDesktop& desktop) {
    EXPECT_EQ(desktop.foreground().frontmostApplication(), std::nullopt);
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), std::nullopt);
    EXPECT_EQ(desktop.runningApplications().frontmost(), std::nullopt);
    EXPECT_FALSE(desktop.runningApplications().isRunning("any"));
    EXPECT_LT(desktop.idle().secondsSinceLastInput(), 0s);
    EXPECT_EQ(desktop.keys().createTap(KeyEvents::keyDown, [] {}), nullptr);
    EXPECT_EQ(desktop.pointer().addGlobalMonitor([](Point) {}), nullptr);
    EXPECT_EQ(desktop.pointer().pointerPosition(), Point{});
}

/// The channels that stand on a display, in the order in which they are listed.
std::vector<Channel> displayChannels(LinuxDesktop& desktop) {
    std::vector<Channel> found;
    for (const auto& channel : desktop.channels())
        for (const char* question :
             {"front window and activation", "window titles", "system idle time", "return from an absence",
              "key events", "button and scroll events", "screens asleep"})
            if (channel.question == question) found.push_back(channel);
    return found;
}

auto refusedWith(const std::string& reason) {
    return AllOf(Field(&Channel::isAvailable, false), Field(&Channel::reason, HasSubstr(reason)),
                 Field(&Channel::remedy, Not(IsEmpty())));
}

auto allRefusedWith(const std::string& reason) {
    return AllOf(SizeIs(7), Each(refusedWith(reason)));
}

class DisplayTest : public testing::Test {
protected:
    QtRunLoop runLoop;
};

TEST_F(DisplayTest, EveryQuestionIsListed) {
    const DesktopSession session;
    LinuxDesktop desktop(runLoop);
    std::vector<std::string> questions;
    for (const auto& channel : desktop.channels()) {
        questions.push_back(channel.question);
        SCOPED_TRACE(channel.question);
        EXPECT_EQ(channel.isAvailable, channel.reason.empty());
        EXPECT_FALSE(channel.name.empty());
    }
    EXPECT_THAT(questions, ElementsAre("front window and activation", "window titles", "system idle time",
                                       "return from an absence", "key events", "button and scroll events",
                                       "sleep and wake", "lock and unlock", "screens asleep", "calls and films",
                                       "accessibility tree", "automation", "page in front", "system log"));
    EXPECT_THAT(displayChannels(desktop), Each(Field(&Channel::isAvailable, true)));
}

TEST_F(DisplayTest, ASessionBusThatHangsCostsAMomentAndNotTheRecording) {
    DesktopSession session;
    const PrivateBus bus(session.runtimeDirectory() / "hanging");
    session.environment().set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    bus.send(SIGSTOP);
    const Seconds begin = uptime();
    LinuxDesktop desktop(runLoop);
    EXPECT_THAT(displayChannels(desktop), Each(Field(&Channel::isAvailable, true)));
    EXPECT_LT(uptime() - begin, 3s);
    bus.send(SIGCONT);  // so that it can be ended
}

TEST_F(DisplayTest, WithoutADisplayThatAnswersEverythingIsRefused) {
    for (const auto& [display, reason] :
         {std::pair("", "no display: DISPLAY is not set, and no Wayland compositor answers"),
          std::pair(":64999", "DISPLAY=:64999")}) {
        SCOPED_TRACE(reason);
        DesktopSession session({.display = false, .buses = false});
        if (*display) session.environment().set("DISPLAY", display);
        LinuxDesktop desktop(runLoop);
        EXPECT_THAT(displayChannels(desktop), allRefusedWith(reason));
        expectNothingIsSeen(desktop);
    }
}

TEST_F(DisplayTest, InAWaylandSessionItsXServerIsNotAsked) {
    struct Row {
        const char* name;
        const char* variable;  ///< WAYLAND_DISPLAY; null: unset
        const char* socket;    ///< in the runtime directory
        bool isAbsolute;
        bool listens;
        const char* type;  ///< XDG_SESSION_TYPE
        bool hasDisplay;
        bool isWayland;
    };
    const Row rows[] = {
        {"named", "wayland-7", "wayland-7", false, true, "", true, true},
        {"named in an X11 session", "wayland-7", "wayland-7", false, true, "x11", true, true},
        {"absolute", "compositor", "compositor", true, true, "", true, true},
        {"left behind", "wayland-0", "wayland-0", false, false, "", true, false},
        {"another's", "wayland-1", "wayland-0", false, true, "", true, false},
        {"beside an X11 session", nullptr, "wayland-0", false, true, "x11", true, false},
        {"not named in its own session", nullptr, "wayland-0", false, true, "wayland", true, true},
        {"beside an X server that connects", nullptr, "wayland-0", false, true, "tty", true, false},
        {"alone", nullptr, "wayland-0", false, true, "tty", false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        DesktopSession session({.display = row.hasDisplay, .buses = false});
        session.environment().set("XDG_SESSION_TYPE", row.type);
        const auto path = session.runtimeDirectory() / row.socket;
        const BoundSocket compositor(path, SOCK_STREAM, row.listens);
        if (row.variable) session.environment().set("WAYLAND_DISPLAY", row.isAbsolute ? path.string() : row.variable);
        const auto window = row.hasDisplay
                                ? std::make_unique<TestWindow>(TestWindow::Properties{.instance = "x", .wmClass = "X"})
                                : nullptr;
        LinuxDesktop desktop(runLoop);
        if (row.isWayland) {
            EXPECT_THAT(displayChannels(desktop), Each(Field(&Channel::isAvailable, false))) << "it says nothing";
            expectNothingIsSeen(desktop);
        } else {
            EXPECT_TRUE(waitUntil([&] { return desktop.foreground().frontmostApplication().has_value(); }));
        }
    }
}

TEST_F(DisplayTest, LogindTellsTheTypeOfASessionThatTheEnvironmentDoesNotTell) {
    const DesktopSession session({.display = false});
    EXPECT_EQ(LogindSession::type(), "");
    const LogindMock logind;
    EXPECT_EQ(LogindSession::type(), "test");
}

TEST_F(DisplayTest, AServerThatDiesLeavesRefusalsAndAQuietProcess) {
    DesktopSession session;
    LinuxDesktop desktop(runLoop);
    int heard = 0;
    auto tap = desktop.keys().createTap(KeyEvents::keyDownAndUp, [&] { ++heard; });
    ASSERT_TRUE(tap && tap->attach());
    tap->enable(true);
    auto monitor = desktop.pointer().addGlobalMonitor([&](Point) { ++heard; });
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().channel().isAvailable; }));

    session.killServer();
    EXPECT_TRUE(waitUntil([&] { return !desktop.idle().channel().isAvailable; }));
    EXPECT_THAT(displayChannels(desktop), allRefusedWith("has gone away"));
    expectNothingIsSeen(desktop);
    EXPECT_THAT(wakeUpsDuring(0.3s), Lt(10)) << "a closed socket is readable for ever";
    tap->enable(false);
    tap->enable(true);
    tap.reset();
    monitor.reset();
    EXPECT_EQ(heard, 0);
}

TEST_F(DisplayTest, AFaultyTableOfTheUserIsNamedAndIgnored) {
    const DesktopSession session({.display = false, .buses = false});
    std::filesystem::create_directories(session.configHome() / "quorvane");
    const auto file = session.configHome() / "quorvane/identities.json";
    writeFile(file, R"({"com.example.Editor": ["editor"]})");
    EXPECT_THAT(LinuxDesktop(runLoop).notices(), IsEmpty());
    writeFile(file, R"({"com.example.Editor": "editor"})");
    EXPECT_THAT(LinuxDesktop(runLoop).notices(),
                ElementsAre(AllOf(HasSubstr("identities.json is ignored"), HasSubstr("com.example.Editor"))));
}

}  // namespace
}  // namespace quorvane::platform
