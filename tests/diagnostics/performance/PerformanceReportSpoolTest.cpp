#include "diagnostics/performance/PerformanceReportSpool.h"

#include "base/Date.h"
#include "diagnostics/performance/WholeRegularFile.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <sys/stat.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

class PerformanceReportSpoolTest : public testing::Test {
protected:
    /// A file as old as that.
    void put(const std::string& name, std::chrono::hours age) {
        fs::create_directories(directory);
        writeFile(directory / name, name);
        fs::last_write_time(directory / name, fs::file_time_type::clock::now() - age);
    }

    [[nodiscard]] std::vector<std::string> pending() const {
        return mapped(spool.pending(), [](const auto& file) { return file.filename().string(); });
    }

    TemporaryFolder folder;
    fs::path directory = folder / "new" / "perf-reports";
    PerformanceReportSpool spool{directory};
};

TEST_F(PerformanceReportSpoolTest, KeepsAReportInAPrivateFileAndFolder) {
    EXPECT_EQ(spool.store("a", std::string("\x1f\0b", 3)), std::nullopt);
    EXPECT_THAT(pending(), ElementsAre("a.json.gz"));
    EXPECT_EQ(wholeRegularFile(directory / "a.json.gz"), std::string("\x1f\0b", 3));
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(directory / "a.json.gz").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(PerformanceReportSpoolTest, TheFiveNewestRemainWhateverElseIsInTheFolder) {
    for (int age = 1; age <= 7; ++age)
        put(std::to_string(age) + ".json.gz", std::chrono::hours(age));
    put("0.json.gz.txt", 100h);
    put("notes", 100h);
    EXPECT_THAT(pending(),
                ElementsAre("7.json.gz", "6.json.gz", "5.json.gz", "4.json.gz", "3.json.gz", "2.json.gz", "1.json.gz"));
    EXPECT_EQ(spool.store("new", "x"), std::nullopt);
    EXPECT_THAT(pending(), ElementsAre("4.json.gz", "3.json.gz", "2.json.gz", "1.json.gz", "new.json.gz"));
    EXPECT_TRUE(fs::exists(directory / "0.json.gz.txt"));
    EXPECT_TRUE(fs::exists(directory / "notes"));
}

TEST_F(PerformanceReportSpoolTest, WhatCannotBeWrittenCostsNoOlderReport) {
    for (int age = 1; age <= 5; ++age)
        put(std::to_string(age) + ".json.gz", std::chrono::hours(age));
    EXPECT_THAT(spool.store("no/such/folder", "x"), Optional(HasSubstr("cannot write")));
    EXPECT_THAT(pending(), SizeIs(5));
    EXPECT_TRUE(PerformanceReportSpool(directory / "1.json.gz" / "below").store("a", "x"));
}

TEST_F(PerformanceReportSpoolTest, HalfWrittenFilesOfAnEarlierRunGo) {
    put("a.json.gz", 1h);
    put("b.json.gz.Ab3xYz", 1h);
    spool.removeLeftovers();
    EXPECT_FALSE(fs::exists(directory / "b.json.gz.Ab3xYz"));
    put("b.json.gz.Ab3xYz", 1h);
    spool.discard();
    EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(PerformanceReportSpoolTest, WhatIsNoFileCannotBeRead) {
    fs::create_directories(directory / "folder.json.gz");
    ASSERT_EQ(mkfifo((directory / "pipe.json.gz").c_str(), 0600), 0);
    for (const char* name : {"folder.json.gz", "pipe.json.gz", "nothing.json.gz"})
        EXPECT_EQ(wholeRegularFile(directory / name), std::nullopt) << name;
    for (const auto& file : spool.pending())
        PerformanceReportSpool::remove(file);
    EXPECT_THAT(pending(), IsEmpty());
}

TEST_F(PerformanceReportSpoolTest, WithoutADirectoryNothingIsKept) {
    PerformanceReportSpool none(std::nullopt);
    EXPECT_EQ(none.store("a", "x"), std::nullopt);
    none.discard();
    EXPECT_THAT(none.pending(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
