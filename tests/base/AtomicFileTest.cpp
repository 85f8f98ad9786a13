#include "base/AtomicFile.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class AtomicFileTest : public testing::Test {
protected:
    AtomicFileTest() { fs::create_directories(folder); }
    ~AtomicFileTest() override { fs::remove_all(folder); }

    static std::string content(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder))
            found.push_back(entry.path().filename());
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

    const fs::path folder = fs::path(testing::TempDir()) / ("quorvane-file-" + std::to_string(::getpid()));
};

TEST_F(AtomicFileTest, TheOldContentStaysUntilTheNewOneIsComplete) {
    const fs::path path = folder / "report.csv";
    writeFileAtomically(path, "old");
    const std::string big(300'000, 'x');
    {
        AtomicFile file(path);
        file.write(big);
        EXPECT_EQ(content(path), "old");
        file.write("end");
        file.commit();
    }
    EXPECT_EQ(content(path), big + "end");
    EXPECT_THAT(names(), ElementsAre("report.csv"));
}

TEST_F(AtomicFileTest, WithoutCommitNothingRemains) {
    const fs::path path = folder / "report.csv";
    writeFileAtomically(path, "old");
    {
        AtomicFile file(path);
        file.write(std::string(300'000, 'x'));
    }
    EXPECT_EQ(content(path), "old");
    EXPECT_THAT(names(), ElementsAre("report.csv"));
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
    struct Row {
        const char* name;
        const char* link;
        const char* target;
    };
    const Row rows[] = {
        {"to a file", "link", "real/file"},
        {"to a link", "link2", "link"},
        {"to a file that is yet to be", "dangling", "real/later"},
    };
    writeFileAtomically(folder / "real" / "file", "old");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        fs::create_symlink(row.target, folder / row.link);
        writeFileAtomically(folder / row.link, row.name);
        EXPECT_TRUE(fs::is_symlink(folder / row.link));
        EXPECT_EQ(content(folder / row.target), row.name);
    }
    EXPECT_THAT(names(), UnorderedElementsAre("real", "link", "link2", "dangling"));
}

TEST_F(AtomicFileTest, FailuresNameTheFileAndTheCause) {
    writeFileAtomically(folder / "file", "old");
    fs::create_symlink("loop", folder / "loop");
    struct Row {
        const char* name;
        fs::path path;
        const char* cause;
    };
    const Row rows[] = {
        {"no such folder", folder / "missing" / "file", "No such file or directory"},
        {"a file for a folder", folder / "file" / "new", "Not a directory"},
        {"a folder", folder, "Is a directory"},
        {"a link to itself", folder / "loop", "Too many levels of symbolic links"},
        {"a full disk", "/dev/full", "No space left on device"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string failure = failureOf(row.path);
        EXPECT_THAT(failure, HasSubstr(row.cause));
        EXPECT_THAT(failure, HasSubstr(row.path.string()));
    }
    EXPECT_EQ(content(folder / "file"), "old");
    EXPECT_THAT(names(), UnorderedElementsAre("file", "loop"));
    EXPECT_THAT(failureOf("/dev/full", std::string(1 << 20, 'x')), HasSubstr("No space left on device"));
}

TEST_F(AtomicFileTest, WhatIsNoRegularFileIsWrittenDirectly) {
    EXPECT_EQ(failureOf("/dev/null"), "no failure");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

}  // namespace
}  // namespace quorvane
