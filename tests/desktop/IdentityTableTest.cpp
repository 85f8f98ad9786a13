#include "platform/linux/IdentityTable.h"

#include "support/Matching.h"

namespace quorvane::platform {
namespace {

TEST(IdentityTableTest, WellKnownApplicationsHaveTheirCounterpartsIdentifiers) {
    const auto table = IdentityTable::builtIn();
    const struct {
        const char* name;
        const char* expected;
    } rows[] = {
        {"google-chrome", "com.google.Chrome"},
        {"chromium", "com.google.Chrome"},
        {"org.chromium.Chromium", "com.google.Chrome"},
        {"firefox-esr", "org.mozilla.firefox"},
        {"brave-browser", "com.brave.Browser"},
        {"microsoft-edge", "com.microsoft.edgemac"},
        {"vivaldi-stable", "com.vivaldi.Vivaldi"},
        {"opera", "com.operasoftware.Opera"},
        {"Code", "com.microsoft.vscode"},
        {"com.slack.Slack", "com.tinyspeck.slackmacgap"},
        {"TelegramDesktop", "ru.keepcoder.telegram"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(table.bundleIdentifier(row.name), row.expected) << row.name;
    EXPECT_EQ(table.bundleIdentifier("debian-xterm"), std::nullopt);
}

TEST(IdentityTableTest, ApplicationsThatOnlyWorkAlikeKeepTheirOwnIdentifier) {
    auto table = IdentityTable::builtIn();
    EXPECT_EQ(table.documentModel("org.xfce.Mousepad"), "com.apple.TextEdit");
    EXPECT_EQ(table.bundleIdentifier("org.xfce.mousepad"), std::nullopt);
    EXPECT_EQ(table.documentModel("com.apple.TextEdit"), std::nullopt);
    EXPECT_EQ(table.extend(R"({"documents": {"com.apple.Preview": ["my-viewer", "mousepad"]}})"), std::nullopt);
    EXPECT_EQ(table.documentModel("my-viewer"), "com.apple.Preview");
    EXPECT_EQ(table.documentModel("mousepad"), "com.apple.Preview");
    EXPECT_THAT(table.extend(R"({"documents": ["x"]})"), Optional(HasSubstr("documents")));
    EXPECT_THAT(table.extend(R"({"documents": {"com.apple.Preview": "x"}})"), Optional(HasSubstr("com.apple.Preview")));
}

TEST(IdentityTableTest, AnAddedTableGoesBeforeWhatWasThere) {
    auto table = IdentityTable::builtIn();
    EXPECT_EQ(table.extend(R"({"com.example.Browser": ["Chromium", "my-browser"]})"), std::nullopt);
    EXPECT_EQ(table.bundleIdentifier("chromium"), "com.example.Browser");
    EXPECT_EQ(table.bundleIdentifier("my-browser"), "com.example.Browser");
    EXPECT_EQ(table.bundleIdentifier("google-chrome"), "com.google.Chrome");
}

TEST(IdentityTableTest, AFaultyTableIsExplainedAndChangesNothing) {
    const struct {
        const char* json;
        const char* problem;
    } rows[] = {
        {R"({"com.example.A": ["chromium"], )", ""},
        {R"(["chromium"])", "not an object"},
        {R"({"com.example.A": ["chromium"], "com.example.B": "x"})", "com.example.B"},
        {R"({"com.example.A": ["chromium", 7]})", "com.example.A"},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.json);
        auto table = IdentityTable::builtIn();
        EXPECT_THAT(table.extend(row.json), Optional(HasSubstr(row.problem)));
        EXPECT_EQ(table.bundleIdentifier("chromium"), "com.google.Chrome");
    }
}

}  // namespace
}  // namespace quorvane::platform
