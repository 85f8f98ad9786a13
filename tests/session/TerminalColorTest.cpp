#include "session/TerminalColor.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(TerminalColorTest, WrapsTextInColorsThatEndBehindItAndOnlyWhereTheyAreOn) {
    const TerminalColor on(true);
    const Color blue{.red = 27, .green = 122, .blue = 233};
    EXPECT_EQ(on.colored("█▏", blue), "\x1b[38;2;27;122;233m█▏\x1b[0m");
    EXPECT_EQ(on.onGround(" A ", blue), "\x1b[38;2;255;255;255;48;2;27;122;233m A \x1b[0m");
    EXPECT_EQ(on.onGround("A", {255, 227, 192}), "\x1b[38;2;0;0;0;48;2;255;227;192mA\x1b[0m");
    EXPECT_EQ(on.colored("", blue), "");
    const TerminalColor off(false);
    EXPECT_EQ(off.colored("█", blue), "█");
    EXPECT_EQ(off.onGround(" A ", blue), " A ");
}

}  // namespace
}  // namespace quorvane
