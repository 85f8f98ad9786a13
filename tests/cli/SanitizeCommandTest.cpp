#include "cli/CliFixture.h"

#include "diagnostics/LogPrivacySanitizer.h"

namespace quorvane {
namespace {

using SanitizeCommandTest = CliTest;

TEST_F(SanitizeCommandTest, WritesTheRedactedTextBackWithNoByteAdded) {
    const std::pair<const char*, std::string> rows[] = {
        {"nothing", ""},
        {"no line end", "plain"},
        {"line ends", "a\r\n\nb\n\n"},
        {"bytes that are no text", std::string("\0\xFF\xC3(\n", 5)},
        {"a megabyte", std::string(1 << 20, 'x')},
    };
    for (const auto& [name, text] : rows) {
        SCOPED_TRACE(name);
        setting_.input = text;
        const auto result = runBare({"sanitize"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(result.out == text);
    }
}

TEST_F(SanitizeCommandTest, RedactsAsTheLogDoesAndNeedsNoStore) {
    setting_.input = "see https://example.com/x and mia@example.com in " + folder_.path().string() + "/notes.txt\n";
    const auto result = runBare({"sanitize"});
    EXPECT_EQ(result.out, LogPrivacySanitizer::sanitize(setting_.input, folder_.path().string()));
    EXPECT_THAT(result.out, Not(HasSubstr("example")));
    EXPECT_THAT(names(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
