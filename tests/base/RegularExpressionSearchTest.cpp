#include "base/RegularExpressionSearch.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvane {
namespace {

TEST(RegularExpressionSearchTest, FindsAMatchAnywhereWhateverTheCase) {
    RegularExpressionSearch search;
    EXPECT_TRUE(search.finds("ÉDIT[ao]r", "the éditor"));
    EXPECT_TRUE(search.finds("^$", ""));
    EXPECT_TRUE(search.finds("\\p{Han}{2}", "打开文档"));
    EXPECT_FALSE(search.finds("^editor", "the editor"));
    for (const char* bad : {"(", "*", "[z-a]", "\\", "a{2,1}", "(?<name"})
        EXPECT_FALSE(search.finds(bad, "a(*[\\")) << bad;
}

TEST(RegularExpressionSearchTest, GivesTheTextOfTheFirstMatchAsItIsWritten) {
    RegularExpressionSearch search;
    EXPECT_EQ(search.firstMatch("[é文]+", "an É文é and é"), "É文é");
    EXPECT_EQ(search.firstMatch("x*", "abc"), "");
    EXPECT_EQ(search.firstMatch("x", "abc"), std::nullopt);
    EXPECT_EQ(search.firstMatch("(", "("), std::nullopt);
    EXPECT_EQ(search.firstMatch("(a+)+$", std::string(80, 'a') + "!"), std::nullopt);
}

// Without its bound this test would run for centuries.
TEST(RegularExpressionSearchTest, GivesUpOnAnExpressionThatWouldTryForEverAndGoesOnWithTheNext) {
    RegularExpressionSearch search;
    const std::string subject = std::string(80, 'a') + "!";
    for (int i = 0; i < 1000; ++i)
        ASSERT_FALSE(search.finds("(a+)+$", subject));
    EXPECT_TRUE(search.finds("A+!$", subject));
}

}  // namespace
}  // namespace quorvane
