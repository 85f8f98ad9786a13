#include "updates/PlainText.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(PlainTextTest, KeepsTheWordsAndDropsTheRest) {
    struct Row {
        const char* html;
        const char* expected;
    };
    const Row rows[] = {
        {"Faster.\nCalmer.", "Faster.\nCalmer."},
        {"<p>Fa<b>st</b>er</p>\r\n\n<P class='x'>Calmer</P>", "Faster\nCalmer"},
        {"<ul><li>One<li>Two</ul>", "One\nTwo"},
        {"a &amp;lt; b &lt;c&gt; &quot;d&quot;&nbsp;&#39;e&#39; &unknown;", "a &lt; b <c> \"d\" 'e' &unknown;"},
        {"1 < 2 and 3<4", "1 < 2 and 3<4"},
        {"seen<script>alert('x < y')</script><style>p{}</style><!-- no -->, too", "seen\n, too"},
        {"text <a href=\"javascript:x\">link</a", "text link"},
        {"bell\x07, tab\tand \x7f", "bell , tab and"},
        {"<script>", ""},
        {"<", "<"},
        {"", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(plainText(row.html, 1000), row.expected) << row.html;
}

TEST(PlainTextTest, CutsLongTextBetweenCharacters) {
    EXPECT_EQ(plainText("abcdef", 6), "abcdef");
    EXPECT_EQ(plainText("abcdefg", 6), "abc…");
    EXPECT_EQ(plainText("更新更新", 10), "更新…");
    EXPECT_EQ(plainText("更新更", 8), "更…");
}

}  // namespace
}  // namespace quorvane
