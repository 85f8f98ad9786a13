#include "cli/CliFixture.h"

#include <fmt/format.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace quorvane {
namespace {

using DumpLoadCommandTest = CliTest;

const std::string schema = "{\"entity\":\"Schema\",\"version\":\"1.0.0\"}\n";
const std::string twoRecords = recordLine("A", "2026-03-04T15:00:00Z", "2026-03-04T16:00:00Z") +
                               recordLine("B", "2026-03-04T16:00:00Z", "", R"(,"window_title":"a\nb")");

TEST_F(DumpLoadCommandTest, LoadsAFileOrStandardInputAndPrintsWhatCameIn) {
    writeFile(folder_ / "rows.jsonl", schema + twoRecords + "{\"entity\":\"Project\"}\n");
    EXPECT_EQ(outputOf({"load", "rows.jsonl"}), "{\"loaded\":{\"ActivityRecord\":2,\"Project\":1}}\n");
    setting_.input = twoRecords;
    EXPECT_EQ(outputOf({"load", "-"}), "{\"loaded\":{\"ActivityRecord\":2}}\n");
    setting_.input = schema;
    EXPECT_EQ(outputOf({"load", "-"}), "{\"loaded\":{}}\n");
    EXPECT_THAT(names(), ElementsAre("rows.jsonl", "store.sqlite"));
}

TEST_F(DumpLoadCommandTest, MakesAnExactCopyThroughAPipe) {
    load(twoRecords + "{\"entity\":\"Rule\",\"name\":\"r\"}\n");
    const std::string dump = outputOf({"dump"});
    std::filesystem::remove(store());
    load(dump);
    EXPECT_EQ(outputOf({"dump"}), dump);
}

TEST_F(DumpLoadCommandTest, WritesTheDumpToAFileThatIsThereWholeOrNotAtAll) {
    load(twoRecords);
    EXPECT_EQ(outputOf({"dump", "-o", "dump.jsonl"}), "");
    EXPECT_EQ(contentOf(folder_ / "dump.jsonl"), outputOf({"dump"}));
    EXPECT_EQ(outputOf({"dump", "-o", "-"}), outputOf({"dump"}));
    EXPECT_THAT(names(), ElementsAre("dump.jsonl", "store.sqlite"));
}

TEST_F(DumpLoadCommandTest, NeverWritesOverTheStoreThatItReads) {
    load(twoRecords);
    const std::string before = contentOf(store());
    std::filesystem::create_hard_link(store(), folder_ / "link");
    for (const char* name : {"store.sqlite", "./store.sqlite", "link"}) {
        SCOPED_TRACE(name);
        const auto result = run({"dump", "-o", name});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, isRefusal(HasSubstr("this is the store itself")));
        EXPECT_EQ(contentOf(store()), before);
    }
}

TEST_F(DumpLoadCommandTest, RefusesABadLineAndChangesNothing) {
    load(twoRecords);
    const std::string before = contentOf(store());
    writeFile(folder_ / "bad.jsonl", schema + "{\"entity\":\"Project\"}\n{\"entity\":\"Project\",\"nam\":1}\n");
    const auto fromFile = run({"load", "bad.jsonl"});
    EXPECT_EQ(fromFile.status, 1);
    EXPECT_EQ(fromFile.out, "");
    EXPECT_EQ(fromFile.err, "quorvane-cli: bad.jsonl: line 3: Project has no \"nam\"\n");
    setting_.input = "\n" + twoRecords;
    const auto fromInput = run({"load", "-"});
    EXPECT_EQ(fromInput.status, 1);
    EXPECT_EQ(fromInput.err, "quorvane-cli: standard input: line 1: the line is empty\n");
    EXPECT_EQ(contentOf(store()), before);
    EXPECT_THAT(names(), ElementsAre("bad.jsonl", "store.sqlite"));
}

TEST_F(DumpLoadCommandTest, LeavesNoNewStoreBehindWhenNothingCouldBeLoaded) {
    setting_.input = "{}\n";
    EXPECT_EQ(run({"load", "-"}).status, 1);
    EXPECT_EQ(run({"load", "missing.jsonl"}).status, 1);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(DumpLoadCommandTest, SaysWhyAFileCannotBeLoaded) {
    std::filesystem::create_directory(folder_ / "folder");
    struct Row {
        const char* name;
        const char* line;
    };
    const Row rows[] = {
        {"missing.jsonl", "quorvane-cli: missing.jsonl: No such file or directory\n"},
        {"folder", "quorvane-cli: folder: this is a directory\n"},
        {"folder/", "quorvane-cli: folder/: this is a directory\n"},
        {"", "quorvane-cli: : No such file or directory\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = run({"load", row.name});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, row.line);
    }
}

TEST_F(DumpLoadCommandTest, AReadingCommandOnAMissingStoreFailsAndMakesNone) {
    for (const Arguments& arguments :
         {Arguments{"dump"}, {"records"}, {"export-csv"}, {"status"}, {"dump", "-o", "x"}}) {
        SCOPED_TRACE(arguments.front());
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, isRefusal(HasSubstr("there is no such store")));
        EXPECT_THAT(names(), IsEmpty());
    }
}

TEST_F(DumpLoadCommandTest, TakesNowAsTheDefaultOfDates) {
    setting_.input = "{\"entity\":\"Rule\"}\n";
    EXPECT_EQ(run({"--now", "2026-03-04T16:00:00.25+01:00", "load", "-"}).status, 0);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("\"created_at\":\"2026-03-04T15:00:00.250000Z\""));
}

TEST_F(DumpLoadCommandTest, ReadsBesideAnotherProgramThatWrites) {
    load(twoRecords);
    // A folder of many rows in a second process at the same time.
    std::string many;
    for (int i = 0; i < 2000; ++i)
        many += "{\"entity\":\"Rule\"}\n";
    auto setting = setting_;
    setting.input = many;
    ProgramRun writer(QUORVANE_CLI, {"--store", store().string(), "load", "-"}, setting);
    for (int i = 0; i < 5; ++i)
        EXPECT_THAT(outputOf({"records", "--json"}), HasSubstr("A0000000"));
    EXPECT_EQ(writer.wait().status, 0);
}

}  // namespace
}  // namespace quorvane
