#include "platform/linux/DocumentTitle.h"

#include "platform/linux/Proc.h"
#include "platform/linux/RecentDocuments.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

TEST(DocumentTitleTest, PathsAreReadInTheirForms) {
    const std::pair<const char*, const char*> rows[] = {
        {"*~/a b/notes.txt - Mousepad", "/home/u/a b/notes.txt"},
        {"/tmp/x - y.txt – Editor", "/tmp/x - y.txt"},
        {"/tmp/bare.txt", "/tmp/bare.txt"},
        {"notes.txt (~/letters) - gedit", "/home/u/letters/notes.txt"},
        {"notes.txt (/srv/a (b)) [Read-Only] - gedit", "/srv/a (b)/notes.txt"},
        {"notes.txt + (~/letters) - VIM", "/home/u/letters/notes.txt"},
        {"notes.txt - /srv/docs - Geany", "/srv/docs/notes.txt"},
        {"● a - b.txt — /srv/x - y — Editor", "/srv/x - y/a - b.txt"},
        {"notes.txt - / - Geany", "/notes.txt"},
    };
    for (const auto& [title, expected] : rows)
        EXPECT_THAT(DocumentTitle::paths(title, "/home/u"), Contains(expected)) << title;
    for (const char* title : {"", "notes.txt - Mousepad", "Untitled (1) - Editor", "~other/x - Editor", " - ", "()"})
        EXPECT_THAT(DocumentTitle::paths(title, "/home/u"), IsEmpty()) << title;
}

TEST(DocumentTitleTest, ADocumentHasTheNameThatStandsBeforeTheApplications) {
    const std::pair<const char*, const char*> rows[] = {
        {"*Untitled 1 - mousepad", "Untitled 1"},
        {"~/letters/notes - Mousepad", "notes"},
        {"notes (~/letters) - Mousepad", "notes"},
        {"main.cpp - quorvane - Visual Studio Code", "main.cpp"},
        {"quorvane – main.cpp [core]", "main.cpp"},
        {"Bericht – März.odt — LibreOffice Writer", "März.odt"},
        {"Mousepad", ""},
        {"Version 2.0 - Release", ""},
        {"user@host: ~/letters", ""},
        {"", ""},
    };
    for (const auto& [title, expected] : rows)
        EXPECT_EQ(DocumentTitle::documentName(title, {"Mousepad", "mousepad"}), expected) << title;
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
    for (const char* line : {"", "42 (x", "42 (x)", "42 (x) S 1 42", "42 (x) S 1 42 a 0 -1"}) {
        SCOPED_TRACE(line);
        EXPECT_EQ(Proc::parseStatus(line), std::nullopt);
    }
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
