#include "desktop/support/SwaySession.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "platform/linux/wayland/WaylandIdleSource.h"
#include "platform/linux/wayland/WlrToplevels.h"
#include "support/Matching.h"

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
    const FootWindow first(session, "first", "one");
    ASSERT_TRUE(isActive("first", "one"));
    auto second = std::make_unique<FootWindow>(session, "second", "two");
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
    auto window = std::make_unique<FootWindow>(session, "first", "one");
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostApplication().has_value(); }));
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return vacancies == 1; }));
}

TEST_F(WaylandTest, APauseIsCountedFromItsLastInputAndItsEndIsTold) {
    WaylandIdleSource idle(runLoop, connection);
    int returns = 0;
    const auto subscription = idle.observeReturn([&] { ++returns; });
    const FootWindow window(session, "first", "one");
    ASSERT_EQ(run({"wtype", "-s", "10", "a"}), 0);
    ASSERT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() > 1.2s; }));
    EXPECT_LT(idle.secondsSinceLastInput(), 3s);
    ASSERT_EQ(run({"wtype", "-s", "10", "a"}), 0);
    ASSERT_TRUE(waitUntil([&] { return returns == 1; }));
    EXPECT_EQ(idle.secondsSinceLastInput(), 0s);
    EXPECT_TRUE(idle.channel().isAvailable);
}

TEST_F(WaylandTest, ACompositorThatEndsOrHangsHoldsNobodyUpAndIsFoundAgain) {
    auto window = std::make_unique<FootWindow>(session, "first", "one");
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
    const FootWindow next(session, "next", "two");
    ASSERT_TRUE(waitUntil([&] { return windows.channel().isAvailable; }, 10s));
    EXPECT_TRUE(isActive("next", "two"));
}

}  // namespace
}  // namespace quorvane::platform
