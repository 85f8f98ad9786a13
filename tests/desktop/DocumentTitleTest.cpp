#include "platform/linux/documents/DocumentTitle.h"

#include "platform/linux/documents/RecentDocuments.h"
#include "platform/linux/process/Proc.h"
#include "support/Matching.h"
#include "support/TextTable.h"

namespace quorvane::platform {
namespace {

TEST(DocumentTitleTest, PathsAreReadInTheirForms) {
    for (const auto& row : textTable(QUORVANE_DESKTOP_DATA "/paths-in-titles.txt"))
        EXPECT_THAT(DocumentTitle::paths(row[0], "/home/u"), Contains(row[1])) << row[0];
    for (const char* title : {"", "notes.txt - Mousepad", "Untitled (1) - Editor", "~other/x - Editor", " - ", "()"})
        EXPECT_THAT(DocumentTitle::paths(title, "/home/u"), IsEmpty()) << title;
}

TEST(DocumentTitleTest, ADocumentHasTheNameThatStandsBeforeTheApplications) {
    const auto documentName = [](const std::string& title) {
        return DocumentTitle::documentName(title, {"Mousepad", "mousepad"});
    };
    for (const auto& row : textTable(QUORVANE_DESKTOP_DATA "/documents-in-titles.txt"))
        EXPECT_EQ(documentName(row[0]), row[1]) << row[0];
    for (const char* title : {"Mousepad", "Version 2.0 - Release", "user@host: ~/letters", ""})
        EXPECT_EQ(documentName(title), "") << title;
}

TEST(DocumentTitleTest, ANameStandsInATitleAsAWordOfItsOwn) {
    EXPECT_TRUE(DocumentTitle::names("*notes.txt - Editor", "notes.txt"));
    EXPECT_TRUE(DocumentTitle::names("my-notes.txt, notes.txt", "notes.txt"));
    EXPECT_TRUE(DocumentTitle::names("文档：报告.odt", "报告.odt"));
    EXPECT_FALSE(DocumentTitle::names("my-notes.txt - Editor", "notes.txt"));
    EXPECT_FALSE(DocumentTitle::names("archive.tar.gz", "archive.tar"));
    EXPECT_FALSE(DocumentTitle::names("Über.txt", "ber.txt"));
    EXPECT_FALSE(DocumentTitle::names("anything", ""));
}

TEST(ProcTest, AStatusIsReadWhateverTheProgramsNameHolds) {
    EXPECT_EQ(Proc::parseStatus("42 (a) R 1 (b) S 1 42 40 34817 77 4194304 1 2"),
              (Proc::Status{.state = 'S', .session = 40, .terminal = 34817, .foreground = 77}));
    EXPECT_EQ(Proc::parseStatus("42 (x) S 1 42 42 0 -1 4194304"),
              (Proc::Status{.state = 'S', .session = 42, .terminal = 0, .foreground = -1}));
    for (const char* line : {"", "42 (x", "42 (x)", "42 (x) S 1 42", "42 (x) S 1 42 a 0 -1"})
        EXPECT_EQ(Proc::parseStatus(line), std::nullopt) << line;
    EXPECT_EQ(Proc::pseudoTerminal(0x8803), 3U);
    EXPECT_EQ(Proc::pseudoTerminal(0x108803), 259U);
    EXPECT_EQ(Proc::pseudoTerminal(0x0401), std::nullopt);
}

TEST(RecentDocumentsTest, LongerNamesGoFirstThenTheLastUsed) {
    const auto bookmark = [](const std::string& url, const std::string& exec, const std::string& modified) {
        return "<bookmark href=\"" + url + "\"><info><metadata><bookmark:applications><bookmark:application exec=\"" +
               exec + "\" modified=\"" + modified + "\"/></bookmark:applications></metadata></info></bookmark>";
    };
    const auto list = "<?xml version=\"1.0\"?><xbel>" +
                      bookmark("file:///a/my%20notes.txt", "&apos;edit %u&apos;", "2026-01-01T00:00:00.5Z") +
                      bookmark("file:///b/notes.txt", "edit", "2026-01-02T00:00:00Z") +
                      bookmark("file:///c/my%20notes.txt", "/usr/bin/edit %f", "2026-01-03T00:00:00Z") +
                      bookmark("file:///d/my%20notes.txt", "editor", "2026-01-04T00:00:00Z") +
                      bookmark("https://example.org/notes.txt", "edit", "2026-01-05T00:00:00Z");
    const auto found = [&](const std::string& xbel) {
        return RecentDocuments::namedByTitle(xbel, "my notes.txt - Edit", {"edit"});
    };
    EXPECT_THAT(found(list + "</xbel>"), ElementsAre("/c/my notes.txt", "/a/my notes.txt", "/b/notes.txt"));
    EXPECT_THAT(found(list + "<bookmark href=\"file:///"),
                ElementsAre("/c/my notes.txt", "/a/my notes.txt", "/b/notes.txt"));
    EXPECT_THAT(found("no list"), IsEmpty());
    EXPECT_THAT(found(""), IsEmpty());
}

}  // namespace
}  // namespace quorvane::platform
