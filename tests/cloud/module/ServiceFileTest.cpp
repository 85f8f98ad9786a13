#include "cloud/module/ServiceFile.h"

#include "desktop/support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvane {
namespace {

using ServiceFile::Section;

TEST(ServiceFileTest, FindsASectionAsLibpqDoes) {
    struct Row {
        const char* name;
        std::string text;
        Section expected;
    };
    const Row rows[] = {
        {"nothing", "", Section::missing},
        {"one setting", "[quorvane]\nhost=db.example.org\n", Section::filled},
        {"no end of line", "[quorvane]\nhost=db", Section::filled},
        {"name without a setting", "[quorvane]\n", Section::empty},
        {"name and nothing else", "[quorvane]", Section::empty},
        {"comments and blanks around", "# mine\n\n  [quorvane]  \n\t\n  # no host\n\thost = db\n", Section::filled},
        {"comments alone", "[quorvane]\n# host=db\n\n", Section::empty},
        {"a comment that looks like it", "#[quorvane]\nhost=db\n", Section::missing},
        {"lines of another system", "[quorvane]\r\nhost=db\r\n", Section::filled},
        {"the same without a setting", "[quorvane]\r\n\r\n# host\r\n", Section::empty},
        {"another name", "[other]\nhost=db\n", Section::missing},
        {"a longer name", "[quorvane-owner]\nhost=db\n", Section::missing},
        {"a shorter name", "[quor]\nhost=db\n", Section::missing},
        {"another case", "[Quorvane]\nhost=db\n", Section::missing},
        {"blanks in the brackets", "[ quorvane ]\nhost=db\n", Section::missing},
        {"words behind the bracket", "[quorvane] at home\nhost=db\n", Section::filled},
        {"behind others", "[a]\nhost=x\n[quorvane]\nhost=db\n[b]\n", Section::filled},
        {"settings of the next one", "[quorvane]\n[other]\nhost=db\n", Section::empty},
        {"twice, the first one counts", "[quorvane]\n[quorvane]\nhost=db\n", Section::empty},
        {"twice, the first one filled", "[quorvane]\nhost=db\n[quorvane]\n", Section::filled},
        {"from a directory", "[quorvane]\nldap://ldap.example.org/dc=example?description?one?(cn=db)\n",
         Section::filled},
        {"what libpq will refuse", "[quorvane]\nnonsense\n", Section::filled},
        {"settings without a section", "host=db\n", Section::missing},
        {"bytes", std::string("[quorvane]\n\0\xff=\x80\n", 15), Section::filled},
        {"one line without an end", std::string(5'000'000, 'x'), Section::missing},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ServiceFile::section(row.text, "quorvane"), row.expected);
    }
}

class ServiceFilesTest : public testing::Test {
protected:
    ServiceFilesTest() {
        for (const char* folder : {"home", "system"})
            std::filesystem::create_directory(folder_ / folder);
        environment_.set("HOME", (folder_ / "home").string());
        environment_.set("PGSYSCONFDIR", (folder_ / "system").string());
        environment_.unset("PGSERVICEFILE");
    }

    void write(const std::string& name, const std::string& text) { writeFile(folder_ / name, text); }
    void chooseFile(const std::string& name) { environment_.set("PGSERVICEFILE", (folder_ / name).string()); }
    static bool isThere() { return ServiceFile::hasService("quorvane"); }

    static constexpr const char* filled = "[quorvane]\nhost=db\n";
    TemporaryFolder folder_;
    Environment environment_;
};

TEST_F(ServiceFilesTest, LooksIntoTheUsersFileAndThenIntoTheSystems) {
    EXPECT_FALSE(isThere());
    write("system/pg_service.conf", filled);
    EXPECT_TRUE(isThere());
    write("home/.pg_service.conf", "[other]\nhost=db\n");
    EXPECT_TRUE(isThere());
    write("home/.pg_service.conf", "[quorvane]\n");
    EXPECT_FALSE(isThere());  // libpq goes no further, either
    write("system/pg_service.conf", "");
    write("home/.pg_service.conf", filled);
    EXPECT_TRUE(isThere());
}

TEST_F(ServiceFilesTest, AFileThatTheEnvironmentNamesTakesThePlaceOfTheUsers) {
    write("home/.pg_service.conf", filled);
    write("chosen", "");
    chooseFile("chosen");
    EXPECT_FALSE(isThere());
    write("chosen", filled);
    EXPECT_TRUE(isThere());
    write("chosen", "");
    write("system/pg_service.conf", filled);
    EXPECT_TRUE(isThere());
}

TEST_F(ServiceFilesTest, WhatIsNoFileHasNoService) {
    write("system/pg_service.conf", filled);
    chooseFile("missing");
    EXPECT_FALSE(isThere());
    chooseFile("home");
    EXPECT_FALSE(isThere());
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);  // nobody writes into it
    chooseFile("pipe");
    EXPECT_FALSE(isThere());
    environment_.set("PGSERVICEFILE", "/dev/zero");
    EXPECT_FALSE(isThere());
    environment_.set("PGSERVICEFILE", "");
    EXPECT_FALSE(isThere());
}

TEST_F(ServiceFilesTest, ReadsABoundedPartOfAHugeFile) {
    write("huge", filled);
    std::filesystem::resize_file(folder_ / "huge", std::uintmax_t{1} << 40);  // a hole
    chooseFile("huge");
    EXPECT_TRUE(isThere());
    write("huge", std::string((1 << 20) + 1, '\n') + filled);
    EXPECT_FALSE(isThere());
}

}  // namespace
}  // namespace quorvane
