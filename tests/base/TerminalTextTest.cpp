#include "base/TerminalText.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(TerminalTextTest, MakesOneLineThatNoTerminalTakesForACommand) {
    struct Row {
        const char* name;
        std::string text;
        const char* expected;
    };
    const Row rows[] = {
        {"ordinary text stays", "Ledger, Pro — 写作 مشروع 🎨", "Ledger, Pro — 写作 مشروع 🎨"},
        {"line ends", "a\r\nb\tc\v\f", "a  b c  "},
        {"escape sequences", "\x1b[2J\x1b]0;title\x07", " [2J ]0;title "},
        {"nothing and delete", std::string("a\0b\x7F", 4), "a b "},
        {"C1 controls", "a\u009B31mb\u0080\u009F\u00A0", "a 31mb  \u00A0"},
        {"separators of lines", "a\u2028b\u2029", "a b "},
        {"turned directions", "a\u202Eb\u2066c\u2069\u200F", "abc"},
        {"broken text", "a\xFF\xC2", "a\uFFFD\uFFFD"},
        {"joined emoji stay whole", "👩\u200D💻", "👩\u200D💻"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(harmlessLine(row.text), row.expected);
    }
}

}  // namespace
}  // namespace quorvane
