#include "platform/simulated/SimulatedDesktop.h"

#include "base/Iso8601.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvane::platform {
namespace {

using testing::ElementsAre;
using testing::Optional;

class SimulatedDesktopTest : public testing::Test {
protected:
    SimulatedRunLoop loop{*parseIso8601("2026-03-02T09:00:00Z")};
    SimulatedDesktop desktop{loop};
};

TEST_F(SimulatedDesktopTest, AnActivationFindsTheNewApplicationInFront) {
    std::vector<std::string> seen;
    const auto watching = desktop.foreground().observeActivation([&](const auto& application) {
        seen.push_back(application ? application->bundleIdentifier.value_or("no id") : "malformed");
        seen.push_back(desktop.foreground().frontmostApplication()->localizedName.value_or("no name"));
    });
    desktop.bringToFront("org.example.editor", "Editor");
    desktop.setFrontmostSilently("org.example.mail", "Mail");
    desktop.sendMalformedActivation();
    desktop.bringToFront(std::nullopt, std::nullopt);
    EXPECT_THAT(seen, ElementsAre("org.example.editor", "Editor", "malformed", "Mail", "no id", "no name"));
}

TEST_F(SimulatedDesktopTest, ATypistIsActiveUpToItsEndExactly) {
    int keys = 0;
    const auto tap = desktop.keys().createTap(KeyEvents::keyDown, [&] { ++keys; });
    ASSERT_TRUE(tap->attach());
    tap->enable(true);
    desktop.typeUntil("09:00:25");
    loop.playUntil("09:01:00");
    EXPECT_EQ(keys, 4);  // at 0, 10, 20 and 25 s
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 35s);
}

TEST_F(SimulatedDesktopTest, IdleTimeIgnoresTheClockButCountsSleep) {
    desktop.movePointer({3, 4});
    loop.setClock(*parseIso8601("2026-03-05T09:00:00Z"));
    loop.playFor(5s);
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 5s);
    loop.sleepFor(3600s);
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 3605s);
    desktop.setIdleReading(-1s);
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), -1s);
    desktop.setIdleReading(std::nullopt);
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 3605s);
}

TEST_F(SimulatedDesktopTest, ATapHearsOnlyWhileAttachedEnabledAndAlive) {
    int heard = 0;
    auto tap = desktop.keys().createTap(KeyEvents::keyDownAndUp, [&] { ++heard; });
    tap->enable(true);
    desktop.pressKey();
    EXPECT_EQ(heard, 0);
    ASSERT_TRUE(tap->attach());
    desktop.pressKey();
    desktop.releaseKey();
    EXPECT_EQ(heard, 2);
    tap->enable(false);
    desktop.pressKey();
    tap->enable(true);
    EXPECT_EQ(desktop.keyTaps(), 1);
    tap.reset();
    desktop.pressKey();
    EXPECT_EQ(heard, 2);
    EXPECT_EQ(desktop.keyTaps(), 0);
}

TEST_F(SimulatedDesktopTest, OnlyActionsOverOwnWindowsReachALocalMonitor) {
    std::vector<Point> global;
    std::vector<Point> local;
    const auto globalMonitor = desktop.pointer().addGlobalMonitor([&](Point at) { global.push_back(at); });
    const auto localMonitor = desktop.pointer().addLocalMonitor([&](Point at) { local.push_back(at); });
    desktop.movePointer({1, 2});
    desktop.click();
    desktop.movePointer({3, 4});
    desktop.scroll(SimulatedDesktop::Over::ownWindow);
    EXPECT_THAT(global, ElementsAre(Point{1, 2}, Point{3, 4}));
    EXPECT_THAT(local, ElementsAre(Point{3, 4}));
}

TEST_F(SimulatedDesktopTest, ALockedSessionShowsTheLoginWindowBeforeItsEventIsSent) {
    desktop.bringToFront("org.example.editor", "Editor");
    desktop.setWindowTitle("Chapter 1");
    std::vector<std::string> inFront;
    const auto note = [&] { inFront.push_back(*desktop.foreground().frontmostApplication()->bundleIdentifier); };
    const auto locked = desktop.systemEvents().observe(SystemEvent::screenLocked, note);
    const auto unlocked = desktop.systemEvents().observe(SystemEvent::screenUnlocked, note);
    desktop.lock();
    EXPECT_EQ(desktop.foreground().frontmostWindowTitle(), std::nullopt);
    desktop.unlock();
    EXPECT_THAT(desktop.foreground().frontmostWindowTitle(), Optional(std::string("Chapter 1")));
    desktop.setLockerShowsLoginWindow(false);
    desktop.lock();
    EXPECT_THAT(inFront, ElementsAre(loginWindowBundleId, "org.example.editor", "org.example.editor"));
}

}  // namespace
}  // namespace quorvane::platform
