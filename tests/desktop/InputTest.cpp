#include "desktop/support/DesktopSession.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "platform/linux/x11/X11IdleSource.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

using testing::Ge;

class InputTest : public testing::Test {
protected:
    static void xdotool(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "xdotool");
        ASSERT_EQ(run(std::move(arguments)), 0);
    }

    QtRunLoop runLoop;
};

TEST_F(InputTest, IdleTimeGrowsUntilAnyInput) {
    const DesktopSession session({.windowManager = false, .buses = false});
    X11Connection x11;
    SyncIdleSource sync(x11);
    ScreenSaverIdleSource screenSaver(x11);
    X11IdleSource both(x11);
    const std::vector<std::string> inputs[] = {{"key", "a"}, {"click", "1"}, {"mousemove_relative", "5", "5"}};
    for (IdleSource* source : std::initializer_list<IdleSource*>{&sync, &screenSaver, &both}) {
        SCOPED_TRACE(source->channel().name);
        EXPECT_TRUE(source->channel().isAvailable);
        for (const auto& input : inputs) {
            ASSERT_TRUE(waitUntil([&] { return source->secondsSinceLastInput() >= 0.25s; }));
            xdotool(input);
            EXPECT_THAT(source->secondsSinceLastInput().count(), AllOf(Ge(0), Lt(0.2)));
        }
    }
}

TEST_F(InputTest, AReturnWakesTheProcessOnceAndNothingDoesBefore) {
    const DesktopSession session({.windowManager = false, .buses = false});
    LinuxDesktop desktop(runLoop);
    ASSERT_TRUE(waitUntil([&] { return desktop.idle().secondsSinceLastInput() >= 1.1s; }));
    int returns = 0;
    std::unique_ptr<ReturnWatch> watch = desktop.returns().watch([&] { ++returns; });
    ASSERT_NE(watch, nullptr);
    (void)wakeUpsDuring(0.1s);
    EXPECT_THAT(wakeUpsDuring(0.5s), Lt(3));
    EXPECT_EQ(returns, 0);
    xdotool({"mousemove_relative", "5", "5"});
    EXPECT_TRUE(waitUntil([&] { return returns == 1; }));
    ASSERT_TRUE(waitUntil([&] { return desktop.idle().secondsSinceLastInput() >= 1.1s; }));
    xdotool({"key", "a"});
    EXPECT_TRUE(staysTrue([&] { return returns == 1; })) << "only the first input is a return";
    watch = desktop.returns().watch([&] {
        ++returns;
        watch.reset();
    });
    EXPECT_TRUE(waitUntil([&] { return returns == 2; })) << "somebody was faster than we are";
    EXPECT_EQ(watch, nullptr);
}

TEST_F(InputTest, AnUntrustedConnectionIsToldNothing) {
    DesktopSession session({.windowManager = false, .buses = false, .isUntrusted = true});
    LinuxDesktop desktop(runLoop);
    EXPECT_LT(desktop.idle().secondsSinceLastInput(), 0s);
    EXPECT_EQ(desktop.returns().watch([] {}), nullptr);
    EXPECT_EQ(desktop.keys().createTap(KeyEvents::keyDown, [] {}), nullptr);
    EXPECT_EQ(desktop.pointer().addGlobalMonitor([](Point) {}), nullptr);
    EXPECT_THAT(desktop.idle().channel().reason, AllOf(HasSubstr("IDLETIME"), HasSubstr("MIT-SCREEN-SAVER")));
    EXPECT_FALSE(desktop.keys().channel().isAvailable);
    EXPECT_THAT(desktop.keys().channel().reason, HasSubstr("RECORD"));
    EXPECT_THAT(desktop.pointer().channel().reason, HasSubstr("XInputExtension"));
}

TEST_F(InputTest, ATapHearsTheKeysThatItAskedForWhileItIsEnabled) {
    const DesktopSession session({.buses = false});
    LinuxDesktop desktop(runLoop);
    EXPECT_TRUE(desktop.keys().channel().isAvailable);
    int downs = 0, both = 0;
    const auto downTap = desktop.keys().createTap(KeyEvents::keyDown, [&] { ++downs; });
    const auto bothTap = desktop.keys().createTap(KeyEvents::keyDownAndUp, [&] { ++both; });
    ASSERT_TRUE(downTap && bothTap && downTap->attach() && bothTap->attach());
    xdotool({"key", "a"});
    EXPECT_TRUE(staysTrue([&] { return downs == 0 && both == 0; })) << "not enabled yet";

    downTap->enable(true);
    bothTap->enable(true);
    xdotool({"key", "a", "key", "shift"});
    EXPECT_TRUE(waitUntil([&] { return downs == 2 && both == 4; })) << downs << " and " << both;

    bothTap->enable(false);
    xdotool({"key", "a"});
    EXPECT_TRUE(waitUntil([&] { return downs == 3; }));
    EXPECT_EQ(both, 4);

    bothTap->enable(true);
    xdotool({"key", "a", "click", "1"});
    EXPECT_TRUE(waitUntil([&] { return downs == 4 && both == 6; })) << downs << " and " << both;
}

TEST_F(InputTest, AHeldKeyIsHeardAgainAndAgainUntilTheTapGoesMeanwhile) {
    const DesktopSession session({.buses = false});
    LinuxDesktop desktop(runLoop);
    int heard = 0;
    std::unique_ptr<KeyEventTap> tap;
    tap = desktop.keys().createTap(KeyEvents::keyDownAndUp, [&] {
        if (++heard == 10) tap.reset();
    });
    ASSERT_TRUE(tap && tap->attach());
    tap->enable(true);
    xdotool({"keydown", "b"});
    EXPECT_TRUE(waitUntil([&] { return heard == 10; })) << heard;
    EXPECT_TRUE(staysTrue([&] { return heard == 10; }));
    xdotool({"keyup", "b"});
}

TEST_F(InputTest, ButtonsAndScrollingAreHeardAndMotionIsNot) {
    const DesktopSession session({.buses = false});
    LinuxDesktop desktop(runLoop);
    TestWindow window({.instance = "page", .wmClass = "Page"});  // scrolling over the root window changes desktops
    ASSERT_TRUE(waitUntil([&] { return desktop.foreground().frontmostApplication().has_value(); }));
    xdotool({"mousemove", "60", "70"});
    std::vector<Point> heard;
    auto monitor = desktop.pointer().addGlobalMonitor([&](Point where) { heard.push_back(where); });
    ASSERT_NE(monitor, nullptr);
    EXPECT_EQ(desktop.pointer().pointerPosition(), (Point{.x = 60, .y = 70}));

    xdotool({"click", "1", "click", "3", "click", "4", "click", "8"});
    EXPECT_TRUE(waitUntil([&] { return heard.size() == 4; })) << heard.size();
    EXPECT_THAT(heard, Each(Point{.x = 60, .y = 70}));

    xdotool({"mousemove_relative", "5", "5", "key", "a"});
    EXPECT_TRUE(staysTrue([&] { return heard.size() == 4; }));

    window.grabPointer();
    xdotool({"click", "1"});
    EXPECT_TRUE(waitUntil([&] { return heard.size() == 5; })) << "a menu of another application is open";

    monitor.reset();
    xdotool({"click", "1"});
    EXPECT_TRUE(staysTrue([&] { return heard.size() == 5; }));
    EXPECT_EQ(desktop.pointer().addLocalMonitor([](Point) {}), nullptr);
}

TEST_F(InputTest, AMovingPointerDoesNotWakeTheProcess) {
    const DesktopSession session({.buses = false});
    LinuxDesktop desktop(runLoop);
    const auto monitor = desktop.pointer().addGlobalMonitor([](Point) {});
    const auto tap = desktop.keys().createTap(KeyEvents::keyDownAndUp, [] {});
    ASSERT_TRUE(monitor && tap && tap->attach());
    tap->enable(true);
    (void)wakeUpsDuring(0.1s);
    std::vector<std::string> moves{"xdotool"};
    for (int i = 0; i < 200; ++i)
        for (const char* word : {"mousemove_relative", "--", i % 2 ? "3" : "-3", "0"})
            moves.emplace_back(word);
    ChildProcess moving(moves);
    EXPECT_THAT(wakeUpsDuring(0.5s), Lt(10));
    EXPECT_EQ(moving.wait(), 0);
}

}  // namespace
}  // namespace quorvane::platform
