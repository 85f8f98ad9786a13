#include "diagnostics/performance/PerformanceReportSpool.h"

#include "diagnostics/performance/WholeRegularFile.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <csignal>
#include <fmt/format.h>
#include <poll.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

/// A report that shows whether it is whole: one letter, many times, and a line end.
std::string reportNumber(int number) {
    return std::string(200'000, static_cast<char>('a' + number % 26)) + "\n";
}

bool isWhole(const std::string& bytes) {
    return bytes.size() == 200'001 && bytes.find_first_not_of(bytes[0]) == 200'000 && bytes.back() == '\n';
}

/// Keeps reports until it is killed.
[[noreturn]] void keepReports(const std::filesystem::path& directory, int round) {
    PerformanceReportSpool spool(directory);
    for (int number = 0;; ++number)
        (void)spool.store(fmt::format("{}-{}", round, number), reportNumber(number));
}

TEST(PerformanceReportSpoolKillTest, AKillAtAnyMomentLeavesAtMostFiveWholeReports) {
    const TemporaryFolder folder;
    const auto directory = folder / "spool";
    std::mt19937 random(2718);
    std::uniform_int_distribution life(300, 15'000);  // microseconds; a report takes some hundreds and more
    std::size_t leftovers = 0;
    for (int round = 0; round < 80; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        const pid_t child = ::fork();
        if (child == 0) keepReports(directory, round);
        const timespec rest{.tv_sec = 0, .tv_nsec = life(random) * 1000L};
        ::ppoll(nullptr, 0, &rest, nullptr);
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << status;

        const auto files = PerformanceReportSpool(directory).pending();
        EXPECT_LE(files.size(), PerformanceReportSpool::mostFiles);
        for (const auto& file : files)
            EXPECT_TRUE(isWhole(wholeRegularFile(file).value_or(""))) << file;
        if (std::filesystem::exists(directory))
            leftovers += static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory), {})) -
                         files.size();
    }
    EXPECT_GT(leftovers, 0U) << "some kill has to meet a file that is half written";
    PerformanceReportSpool(directory).discard();
    EXPECT_TRUE(std::filesystem::is_empty(directory));
}

}  // namespace
}  // namespace quorvane
