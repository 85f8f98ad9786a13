#include "cloud/module/ServiceFile.h"

#include "desktop/support/Environment.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"
#include "support/TextTable.h"

#include <map>
#include <sys/stat.h>

namespace quorvane {
namespace {

using ServiceFile::Section;

TEST(ServiceFileTest, FindsASectionAsLibpqDoes) {
    const auto found = [](const std::string& text) { return ServiceFile::section(text, "quorvane"); };
    const std::map<std::string, Section> names{
        {"missing", Section::missing}, {"empty", Section::empty}, {"filled", Section::filled}};
    for (const auto& row : textTable(QUORVANE_MODULE_DATA "/service-files.txt"))
        EXPECT_EQ(found(row[0]), names.at(row[1])) << row[0];
    EXPECT_EQ(found(""), Section::missing);
    EXPECT_EQ(found(std::string("[quorvane]\n\0\xff=\x80\n", 15)), Section::filled);
    EXPECT_EQ(found(std::string(5'000'000, 'x')), Section::missing);
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
    static bool isThere() { return ServiceFile::hasService("quorvane"); }
    bool isThere(const std::string& chosenFile) {
        environment_.set("PGSERVICEFILE", chosenFile);
        return isThere();
    }

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
    EXPECT_FALSE(isThere((folder_ / "chosen").string()));
    write("system/pg_service.conf", filled);
    EXPECT_TRUE(isThere((folder_ / "chosen").string()));
    write("system/pg_service.conf", "");
    write("chosen", filled);
    EXPECT_TRUE(isThere((folder_ / "chosen").string()));
}

TEST_F(ServiceFilesTest, WhatIsNoFileHasNoService) {
    write("system/pg_service.conf", filled);
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);  // nobody writes into it
    for (const std::string& file : {(folder_ / "missing").string(), (folder_ / "home").string(),
                                    (folder_ / "pipe").string(), std::string("/dev/zero"), std::string()})
        EXPECT_FALSE(isThere(file)) << file;
}

TEST_F(ServiceFilesTest, ReadsABoundedPartOfAHugeFile) {
    write("huge", filled);
    std::filesystem::resize_file(folder_ / "huge", std::uintmax_t{1} << 40);  // a hole
    EXPECT_TRUE(isThere((folder_ / "huge").string()));
    write("huge", std::string((1 << 20) + 1, '\n') + filled);
    EXPECT_FALSE(isThere((folder_ / "huge").string()));
}

}  // namespace
}  // namespace quorvane
