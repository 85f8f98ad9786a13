#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/Waiting.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

/// Every screen by the keyboard alone.
class ScreensTest : public ApplicationScreen {};

TEST_F(ScreensTest, DISABLED_Explore) {
    start();
    for (const char* keys : {"ctrl+2", "ctrl+3", "ctrl+4", "ctrl+comma"}) {
        press(keys);
        (void)waitUntil([&] { return !focus().empty(); }, 2s);
        printf("== %s focus '%s'\n", keys, focus().c_str());
        for (const auto& node : nodes())
            printf("%*s%s '%s'%s\n", node.depth, "", node.role.c_str(), node.name.c_str(),
                   node.isFocusable ? node.isFocused ? " **" : " *" : "");
        printf("-- round:\n");
        for (const auto& name : tabRound())
            printf("   %s\n", name.c_str());
    }
}

}  // namespace
}  // namespace quorvane
