#include "platform/linux/desktop/IdentityTable.h"

#include "support/Matching.h"
#include "support/TextTable.h"

namespace quorvane::platform {
namespace {

TEST(IdentityTableTest, WellKnownApplicationsHaveTheirCounterpartsIdentifiers) {
    const auto table = IdentityTable::builtIn();
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        {"google-chrome", "com.google.Chrome"},
        {"org.chromium.Chromium", "com.google.Chrome"},
        {"firefox-esr", "org.mozilla.firefox"},
        {"Code", "com.microsoft.vscode"},
        {"TelegramDesktop", "ru.keepcoder.telegram"},
        {"debian-xterm", std::nullopt},
        {"libreoffice-calc", "org.libreoffice.script.calc"},
        {"google-chrome-beta", "com.google.Chrome.beta"},
        {"codium_codium", "com.vscodium"},
        {"jetbrains-rustrover", "com.jetbrains.rustrover"}};
    for (const auto& [name, expected] : rows)
        EXPECT_EQ(table.bundleIdentifier(name), expected) << name;
    EXPECT_EQ(table.documentModel("com.google.Chrome.beta"), "com.google.Chrome");
    EXPECT_EQ(table.documentModel("org.libreoffice.script.calc"), "com.microsoft.excel");
}

TEST(IdentityTableTest, TheTableKnowsDebiansDesktopFilesAndTheClassesThatTheyName) {
    const auto table = IdentityTable::builtIn();
    const auto known = [&](const std::string& name) {
        auto identifier = table.bundleIdentifier(name);
        return identifier ? identifier : table.documentModel(name);
    };
    const auto facts = textTable(QUORVANE_DESKTOP_DATA "/debian-applications.txt");
    EXPECT_THAT(facts.size(), testing::Gt(100));
    for (const auto& fact : facts) {
        const auto& desktopId = fact.at(1);
        const auto& wmClass = fact.at(2);
        EXPECT_NE(known(desktopId), std::nullopt) << desktopId;
        EXPECT_EQ(known(wmClass == "-" ? desktopId : wmClass), known(desktopId)) << wmClass;
    }
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
    const std::pair<const char*, const char*> rows[] = {
        {R"({"com.example.A": ["chromium"], )", ""},
        {R"(["chromium"])", "not an object"},
        {R"({"com.example.A": ["chromium"], "com.example.B": "x"})", "com.example.B"},
        {R"({"com.example.A": ["chromium", 7]})", "com.example.A"},
        {"", ""}};
    for (const auto& [json, problem] : rows) {
        auto table = IdentityTable::builtIn();
        EXPECT_THAT(table.extend(json), Optional(HasSubstr(problem))) << json;
        EXPECT_EQ(table.bundleIdentifier("chromium"), "com.google.Chrome");
    }
}

}  // namespace
}  // namespace quorvane::platform
