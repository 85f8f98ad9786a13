#include "platform/linux/accessibility/BrowserWindowTitle.h"

#include <gtest/gtest.h>

namespace quorvane::platform {
namespace {

TEST(BrowserWindowTitleTest, AWindowShowsThePageWhoseTitleItBears) {
    const char* window = "Old  news of today — Mozilla Firefox";
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(window, "Old news of today"));
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(window, ""));
    EXPECT_FALSE(BrowserWindowTitle::isOfPage(window, "News of today"));
    const std::string head(50, 'x');
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(head + "…", head + " and the rest"));
}

}  // namespace
}  // namespace quorvane::platform
