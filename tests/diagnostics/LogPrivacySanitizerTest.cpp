#include "diagnostics/LogPrivacySanitizer.h"

#include "support/Matching.h"
#include "support/TextTable.h"

#include <string_view>

namespace quorvane {
namespace {

using LogPrivacySanitizer::sanitize;

constexpr std::string_view home = "/data/people/ann.b";

TEST(LogPrivacySanitizerTest, ReplacesWhatIsPrivateAndNothingElse) {
    for (const auto& row : textTable(QUORVANE_DIAGNOSTICS_DATA "/sanitized.txt"))
        EXPECT_EQ(sanitize(row[0], home), row[1]);
    EXPECT_EQ(sanitize("http://a\nhttp://b\r\n", home), "[redacted-url]\n[redacted-url]\r\n");
    EXPECT_EQ(sanitize("Token \t=  abc.DEF-1", home), "Token=[redacted]");
    EXPECT_EQ(sanitize("api_key:\n  x y", home), "api_key=[redacted] y");
    const std::string once = sanitize("token: a /Users/b c@d.ee", home);
    EXPECT_EQ(sanitize(once, home), once);
}

TEST(LogPrivacySanitizerTest, AHomeDirectoryIsTakenLiterallyAndOnlyIfItIsOne) {
    for (const auto& row : textTable(QUORVANE_DIAGNOSTICS_DATA "/sanitized-homes.txt"))
        EXPECT_EQ(sanitize(row[1], row[0]), row[2]);
}

TEST(LogPrivacySanitizerTest, AllOtherBytesComeOutAsTheyWentIn) {
    using namespace std::string_literals;
    EXPECT_EQ(sanitize("\xff\xc3 http://a/\xff\xfe \x80\xf0\x9f", home), "\xff\xc3 [redacted-url] \x80\xf0\x9f");
    EXPECT_EQ(sanitize("\xed\xa0\x80 a@b.cc \xc0\xaf", home), "\xed\xa0\x80 [redacted-email] \xc0\xaf");
    EXPECT_EQ(sanitize("a\0token=1\0b"s, home), "a\0token=[redacted]\0b"s);
}

// Each of these takes minutes or the whole stack where the search goes back over what it has seen.
TEST(LogPrivacySanitizerTest, HugeLinesTakeNoMoreThanTheirLength) {
    const auto endless = [](std::string text, std::string_view piece) {
        while (text.size() < 5'000'000)
            text += piece;
        return text;
    };
    for (const auto& [begin, piece] : {std::pair("x@", "b.c1"), {"", "a@b."}, {"token", " "}}) {
        const std::string text = endless(begin, piece);
        EXPECT_TRUE(sanitize(text, home) == text) << piece;
    }
    EXPECT_EQ(sanitize(endless("x@y.", "z"), home), "[redacted-email]");
    EXPECT_EQ(sanitize(endless("token=", "z"), home), "token=[redacted]");
    EXPECT_EQ(sanitize(endless("/home/", "x/"), home), "[redacted-path]");
}

}  // namespace
}  // namespace quorvane
