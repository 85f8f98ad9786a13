#include "base/AtomicFile.h"

#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <map>

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using testing::Key;

class AtomicFileTest : public testing::Test {
protected:
    /// All that lies in the folder: names, and contents of regular files.
    [[nodiscard]] std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            found[entry.path().filename()] = fs::is_regular_file(entry.symlink_status()) ? contentOf(entry.path()) : "";
        return found;
    }
    static std::string failureOf(const fs::path& path, std::string_view bytes = "new") {
        try {
            writeFileAtomically(path, bytes);
        } catch (const FileError& error) {
            return error.what();
        }
        return "no failure";
    }

    const TemporaryFolder folder;
    const std::string big = std::string(300'000, 'x');
};

TEST_F(AtomicFileTest, TheOldContentStaysUntilTheNewOneIsCommitted) {
    const fs::path path = folder / "report.csv";
    writeFileAtomically(path, "old");
    for (const bool commits : {false, true}) {
        {
            AtomicFile file(path);
            file.write(big);
            file.write("end");
            EXPECT_EQ(contentOf(path), "old");
            if (commits) file.commit();
        }
        EXPECT_THAT(files(), ElementsAre(Pair("report.csv", commits ? big + "end" : "old")));
    }
}

TEST_F(AtomicFileTest, AFileIsPrivateAndAReplacedOneKeepsItsPermissions) {
    const fs::path path = folder / "report.csv";
    writeFileAtomically(path, "old");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
    fs::permissions(path, fs::perms{0644});
    writeFileAtomically(path, "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms{0644});
}

TEST_F(AtomicFileTest, ALinkStaysAndItsTargetIsWritten) {
    fs::create_directory(folder / "real");
    writeFileAtomically(folder / "real" / "file", "old");
    fs::create_symlink("real/file", folder / "link");
    fs::create_symlink("link", folder / "to link");
    fs::create_symlink("real/later", folder / "dangling");
    for (const char* link : {"link", "to link", "dangling"}) {
        SCOPED_TRACE(link);
        writeFileAtomically(folder / link, link);
        EXPECT_TRUE(fs::is_symlink(folder / link));
        EXPECT_EQ(contentOf(folder / link), link);
    }
    EXPECT_THAT(files(), ElementsAre(Key("dangling"), Key("link"), Key("real"), Key("to link")));
}

TEST_F(AtomicFileTest, FailuresNameTheFileAndTheCauseAndLeaveNothingBehind) {
    writeFileAtomically(folder / "file", "old");
    fs::create_symlink("loop", folder / "loop");
    const std::pair<fs::path, const char*> rows[] = {
        {folder / "missing" / "file", "No such file or directory"},
        {folder / "file" / "new", "Not a directory"},
        {folder.path(), "Is a directory"},
        {folder / "loop", "Too many levels of symbolic links"},
        {"/dev/full", "No space left on device"},
    };
    for (const auto& [path, cause] : rows)
        EXPECT_THAT(failureOf(path), AllOf(HasSubstr(cause), HasSubstr(path.string())));
    EXPECT_THAT(failureOf("/dev/full", big), HasSubstr("No space left on device"));  // found before the commit
    EXPECT_THAT(files(), ElementsAre(Pair("file", "old"), Key("loop")));
}

TEST_F(AtomicFileTest, WhatIsNoRegularFileIsWrittenDirectly) {
    EXPECT_EQ(failureOf("/dev/null"), "no failure");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

}  // namespace
}  // namespace quorvane
