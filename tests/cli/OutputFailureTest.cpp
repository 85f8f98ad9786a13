#include "cli/CliFixture.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quorvane {
namespace {

/// Places where the data can't go.
class OutputFailureTest : public CliTest {
protected:
    OutputFailureTest() {
        load(recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z"));
        setting_.input = recordLine("B", "2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z");
    }
};

const std::vector<std::vector<std::string>> everyOutput{{"dump"},       {"records"},   {"records", "--json"},
                                                        {"export-csv"}, {"status"},    {"status", "--json"},
                                                        {"sanitize"},   {"load", "-"}, {"doctor"},
                                                        {"--help"}};

TEST_F(OutputFailureTest, SaysThatStandardOutputIsFullOrClosed) {
    for (const bool isFull : {true, false}) {
        setting_.inChild = [isFull] {
            isFull ? ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO) : ::close(STDOUT_FILENO);
        };
        for (const auto& arguments : everyOutput)
            expectRefusal(arguments, 1, "cannot write to standard output");
    }
}

TEST_F(OutputFailureTest, EndsWithoutAWordWhenTheReaderHasGone) {
    setting_.inChild = [] {
        int ends[2];
        if (::pipe(ends) != 0) ::_exit(125);
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        std::signal(SIGPIPE, SIG_DFL);
    };
    for (const auto& arguments : everyOutput) {
        SCOPED_TRACE(arguments.front());
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 128 + SIGPIPE);
        EXPECT_EQ(result.err, "");
    }
}

TEST_F(OutputFailureTest, FailsQuietlyWithStandardErrorClosed) {
    setting_.inChild = [] { ::close(STDERR_FILENO); };
    EXPECT_EQ(run({"dump"}).status, 0);
    EXPECT_EQ(run({"dump", "--nosuch"}).status, 2);
    EXPECT_EQ(contentOf(store()).substr(0, 15), "SQLite format 3");
}

TEST_F(OutputFailureTest, ReadsNothingFromAClosedStandardInput) {
    setting_.inChild = [] { ::close(STDIN_FILENO); };
    EXPECT_EQ(run({"load", "-"}).status, 1);
    EXPECT_EQ(run({"sanitize"}).status, 1);
    EXPECT_EQ(run({"dump"}).status, 0);
}

TEST_F(OutputFailureTest, NamesAFileThatCannotBeWrittenAndLeavesWhatWasThere) {
    std::filesystem::create_directory(folder_ / "folder");
    expectRefusal({"dump", "-o", "folder"}, 1, "folder");
    expectRefusal({"export-csv", "-o", "missing/out.csv"}, 1, "missing/out.csv");
    writeFile(folder_ / "out.csv", "before");
    giveToNobody(folder_.path());
    giveToNobody(store());
    std::filesystem::permissions(folder_.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    setting_.inChild = becomeNobody;
    expectRefusal({"export-csv", "-o", "out.csv"}, 1, "Permission denied");
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(contentOf(folder_ / "out.csv"), "before");
    EXPECT_THAT(names(), ElementsAre("folder", "out.csv", "store.sqlite"));
}

}  // namespace
}  // namespace quorvane
