#include "session/TerminalText.h"

#include "session/LocalTime.h"

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

TEST(TerminalTextTest, WritesDurationsWithAsManyHoursAsThereAre) {
    const std::pair<Seconds, const char*> rows[] = {
        {0s, "0:00:00"},
        {59.999s, "0:00:59"},
        {3599s, "0:59:59"},
        {3600s, "1:00:00"},
        {360'000s, "100:00:00"},
        {-5s, "0:00:00"},
        {Seconds{1e300}, "2562047788:00:54"},
    };
    for (const auto& [duration, expected] : rows)
        EXPECT_EQ(durationText(duration), expected);
}

}  // namespace
}  // namespace quorvane
