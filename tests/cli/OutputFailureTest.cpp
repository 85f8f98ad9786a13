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

    void expectFailure(const Arguments& arguments, const char* cause) {
        SCOPED_TRACE(arguments.front());
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, isRefusal(HasSubstr(cause)));
    }
};

const std::vector<std::vector<std::string>> everyOutput{{"dump"},       {"records"},   {"records", "--json"},
                                                        {"export-csv"}, {"status"},    {"status", "--json"},
                                                        {"sanitize"},   {"load", "-"}, {"doctor"},
                                                        {"--help"}};

TEST_F(OutputFailureTest, SaysThatStandardOutputIsFull) {
    setting_.inChild = [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); };
    for (const auto& arguments : everyOutput)
        expectFailure(arguments, "cannot write to standard output");
}

TEST_F(OutputFailureTest, SaysThatStandardOutputIsClosed) {
    setting_.inChild = [] { ::close(STDOUT_FILENO); };
    for (const auto& arguments : everyOutput)
        expectFailure(arguments, "cannot write to standard output");
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
    expectFailure({"dump", "-o", "folder"}, "folder");
    expectFailure({"export-csv", "-o", "missing/out.csv"}, "missing/out.csv");
    writeFile(folder_ / "out.csv", "before");
    giveToNobody(folder_.path());
    giveToNobody(store());
    std::filesystem::permissions(folder_.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    setting_.inChild = becomeNobody;
    expectFailure({"export-csv", "-o", "out.csv"}, "Permission denied");
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(contentOf(folder_ / "out.csv"), "before");
    EXPECT_THAT(names(), ElementsAre("folder", "out.csv", "store.sqlite"));
}

}  // namespace
}  // namespace quorvane
