#include "base/Text.h"
#include "cli/CliFixture.h"

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
    for (const char* name : {"store.sqlite", "./store.sqlite", "link"})
        expectRefusal({"dump", "-o", name}, 1, "this is the store itself");
    EXPECT_EQ(contentOf(store()), before);
}

TEST_F(DumpLoadCommandTest, RefusesABadLineAndChangesNothing) {
    load(twoRecords);
    const std::string before = contentOf(store());
    writeFile(folder_ / "bad.jsonl", schema + "{\"entity\":\"Project\"}\n{\"entity\":\"Project\",\"nam\":1}\n");
    expectRefusal({"load", "bad.jsonl"}, 1, "quorvane-cli: bad.jsonl: line 3: Project has no \"nam\"\n");
    setting_.input = "\n" + twoRecords;
    expectRefusal({"load", "-"}, 1, "quorvane-cli: standard input: line 1: the line is empty\n");
    EXPECT_EQ(contentOf(store()), before);
    EXPECT_THAT(names(), ElementsAre("bad.jsonl", "store.sqlite"));
}

TEST_F(DumpLoadCommandTest, SaysWhyNothingCanBeLoadedAndLeavesNoNewStoreBehind) {
    setting_.input = "{}\n";
    expectRefusal({"load", "-"}, 1, ": standard input: line 1: ");
    std::filesystem::create_directory(folder_ / "folder");
    expectRefusal({"load", "missing.jsonl"}, 1, ": missing.jsonl: No such file or directory\n");
    expectRefusal({"load", "folder"}, 1, ": folder: this is a directory\n");
    expectRefusal({"load", "folder/"}, 1, ": folder/: this is a directory\n");
    expectRefusal({"load", ""}, 1, ": : No such file or directory\n");
    EXPECT_THAT(names(), ElementsAre("folder"));
}

TEST_F(DumpLoadCommandTest, ACommandThatNeedsAStoreFailsWithoutOneAndMakesNone) {
    for (const char* command : {"dump", "records", "export-csv", "status", "dump -o x", "praise", "card -o x",
                                "projects list", "projects archive 10000000-0000-4000-8000-000000000000", "shares list",
                                "shares create --title a", "shares stop 10000000-0000-4000-8000-000000000000"})
        expectRefusal(text::split(command, ' '), 1, "store.sqlite: there is no such store");
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(DumpLoadCommandTest, TakesNowAsTheDefaultOfDates) {
    setting_.input = "{\"entity\":\"Rule\"}\n";
    EXPECT_EQ(run({"--now", "2026-03-04T16:00:00.25+01:00", "load", "-"}).status, 0);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("\"created_at\":\"2026-03-04T15:00:00.250000Z\""));
}

}  // namespace
}  // namespace quorvane
