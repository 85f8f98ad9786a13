#include "platform/simulated/SimulatedDesktop.h"

#include "base/Iso8601.h"

#include <gmock/gmock.h>

namespace quorvane::platform {
namespace {

class SimulatedDesktopTest : public testing::Test {
protected:
    SimulatedRunLoop loop{*parseIso8601("2026-03-02T09:00:00Z")};
    SimulatedDesktop desktop{loop};
};

TEST_F(SimulatedDesktopTest, ATapHearsATypistUpToHisEndWhileItIsEnabledAndAlive) {
    int keys = 0;
    auto tap = desktop.keys().createTap(KeyEvents::keyDown, [&] { ++keys; });
    ASSERT_TRUE(tap->attach());
    desktop.pressKey();
    EXPECT_EQ(keys, 0);
    tap->enable(true);
    desktop.typeUntil("09:00:25");
    loop.playUntil("09:01:00");
    EXPECT_EQ(keys, 4);  // at 0, 10, 20 and 25 s
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 35s);
    tap.reset();
    desktop.pressKey();
    EXPECT_EQ(keys, 4);
}

TEST_F(SimulatedDesktopTest, IdleTimeIgnoresTheClockButCountsSleep) {
    desktop.movePointer({3, 4});
    loop.setClock(*parseIso8601("2026-03-05T09:00:00Z"));
    loop.playFor(5s);
    loop.sleepFor(3600s);
    EXPECT_EQ(desktop.idle().secondsSinceLastInput(), 3605s);
}

}  // namespace
}  // namespace quorvane::platform
