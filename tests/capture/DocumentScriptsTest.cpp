#include "capture/DocumentScripts.h"

#include "support/Matching.h"

#include <fmt/format.h>
#include <fstream>
#include <sstream>

namespace quorvane {
namespace {

using platform::ScriptFamily;

std::ifstream open(const char* name) {
    return std::ifstream(std::string(QUORVANE_CAPTURE_DATA "/") + name);
}

/// The text with an application's name in place of NAME.
std::string withName(std::string text, std::string_view name) {
    constexpr std::string_view placeholder = "\"NAME\"";
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder, at + 1))
        text.replace(at, placeholder.size(), fmt::format("\"{}\"", name));
    return text;
}

/// The scripts of the families, which stand in the file in their order with "== family" before each.
std::vector<std::string> expectedSources() {
    std::vector<std::string> sources;
    auto file = open("document-script-sources.txt");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== "))
            sources.emplace_back();
        else
            sources.back() += (sources.back().empty() ? "" : "\n") + line;
    }
    return sources;
}

TEST(DocumentScriptsTest, TheTableHasItsRowsInTheirOrder) {
    std::string table;
    for (const auto& row : DocumentScripts::rows())
        table += fmt::format("{}|{}|{}\n", row.applicationName, row.bundleId, static_cast<int>(row.family));
    std::stringstream expected;
    expected << open("document-scripts.txt").rdbuf();
    EXPECT_EQ(table, expected.str());
    EXPECT_EQ(DocumentScripts::rows().size(), 87U);
}

TEST(DocumentScriptsTest, EachRowHasTheScriptOfItsFamilyWithItsName) {
    constexpr ScriptFamily questions[] = {
        ScriptFamily::frontDocumentPath,   ScriptFamily::frontDocumentName, ScriptFamily::currentTrack,
        ScriptFamily::officeDocument,      ScriptFamily::officeDocument,    ScriptFamily::officeDocument,
        ScriptFamily::developmentDocument, ScriptFamily::frontFolder,       ScriptFamily::frontDocumentName,
        ScriptFamily::frontDocumentName,   ScriptFamily::frontDocumentName};
    const auto sources = expectedSources();
    ASSERT_EQ(sources.size(), std::size(questions));
    for (const auto& row : DocumentScripts::rows()) {
        const auto family = static_cast<std::size_t>(row.family) - 1;
        const platform::Script expected{.family = questions[family],
                                        .applicationName = std::string(row.applicationName),
                                        .bundleIdentifier = "org.example.Running",
                                        .source = withName(sources.at(family), row.applicationName)};
        EXPECT_EQ(DocumentScripts::script(row, "org.example.Running"), expected) << row.applicationName << "\n"
                                                                                 << DocumentScripts::source(row);
    }
}

TEST(DocumentScriptsTest, FiveRowsAreComparedInLowerCaseAndTheOneOtherWithACapitalNeverMatches) {
    std::vector<std::string_view> unreachable;
    for (const auto& row : DocumentScripts::rows())
        if (DocumentScripts::row(row.bundleId) != &row) unreachable.push_back(row.applicationName);
    EXPECT_THAT(unreachable, ElementsAre("ColorSync Utility"));
    EXPECT_EQ(DocumentScripts::row("com.apple.textedit")->applicationName, "TextEdit");
    EXPECT_EQ(DocumentScripts::row("COM.Apple.Preview")->applicationName, "Preview");
    EXPECT_EQ(DocumentScripts::row("com.Spotify.Client")->applicationName, "Spotify");
    EXPECT_EQ(DocumentScripts::row("com.apple.utilities.colorsync"), nullptr);
    EXPECT_EQ(DocumentScripts::row("com.google.chrome"), nullptr);
}

TEST(DocumentScriptsTest, WhatAScriptSaysForNothing) {
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        {"com.apple.textedit", std::nullopt}, {"com.hnc.discord", "Discord"},
        {"com.apple.music", "Unknown Track"}, {"com.microsoft.excel", std::nullopt},
        {"com.apple.dt.xcode", ""},           {"com.apple.finder", "Desktop"},
        {"com.apple.mail", "Mail"},           {"com.apple.notes", "Untitled Note"},
        {"com.apple.stickies", "Sticky Note"}};
    for (const auto& [bundleId, text] : rows)
        EXPECT_EQ(DocumentScripts::errorText(*DocumentScripts::row(bundleId)), text) << bundleId;
}

}  // namespace
}  // namespace quorvane
