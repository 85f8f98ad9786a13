#include "store/ModelContainer.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <csignal>
#include <poll.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

/// Makes the store with a record, and tells of it by one byte; it never ends by itself.
[[noreturn]] void makeStore(const std::filesystem::path& file, int pipe) {
    ModelContainer container({.file = file});
    aRecord().in(container.mainContext());
    container.mainContext().save();
    if (::write(pipe, "x", 1) != 1) ::_exit(1);
    for (;;)
        ::pause();
}

TEST(KillTest, AProgramThatIsKilledWhileItMakesTheStoreLeavesOneThatOpens) {
    const TemporaryFolder folder;
    std::mt19937 random(31415);
    std::uniform_int_distribution life(50, 12000);  // microseconds; opening the store takes about a thousand
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        const auto file = folder / std::to_string(round);
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) makeStore(file, ends[1]);
        ::close(ends[1]);
        const timespec rest{.tv_sec = 0, .tv_nsec = life(random) * 1000L};
        ::ppoll(nullptr, 0, &rest, nullptr);
        ::kill(child, SIGKILL);
        char told = 0;
        const bool isMade = ::read(ends[0], &told, 1) == 1;
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << status;

        const auto found = ModelContainer({.file = file}).mainContext().count<ActivityRecord>();
        EXPECT_GE(found, isMade ? 1U : 0U);
        EXPECT_LE(found, 1U);
        SQLite::Database database(file.string(), SQLite::OPEN_READONLY);
        ASSERT_EQ(database.execAndGet("PRAGMA integrity_check").getString(), "ok");
    }
}

}  // namespace
}  // namespace quorvane
