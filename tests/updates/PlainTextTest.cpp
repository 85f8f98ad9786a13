#include "updates/PlainText.h"

#include "support/Matching.h"
#include "support/TextTable.h"

namespace quorvane {
namespace {

TEST(PlainTextTest, KeepsTheWordsAndDropsTheRest) {
    for (const auto& row : textTable(QUORVANE_UPDATES_DATA "/plain-text.txt"))
        EXPECT_EQ(plainText(row[0], 1000), row[1]) << row[0];
    for (const char* nothing : {"", "<script>"})
        EXPECT_EQ(plainText(nothing, 1000), "");
}

TEST(PlainTextTest, CutsLongTextBetweenCharacters) {
    EXPECT_EQ(plainText("abcdef", 6), "abcdef");
    EXPECT_EQ(plainText("abcdefg", 6), "abc…");
    EXPECT_EQ(plainText("更新更新", 10), "更新…");
    EXPECT_EQ(plainText("更新更", 8), "更…");
}

}  // namespace
}  // namespace quorvane
