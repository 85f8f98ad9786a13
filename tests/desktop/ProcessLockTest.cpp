#include "platform/linux/process/ProcessLock.h"
#include "desktop/support/ChildProcess.h"
#include "support/Matching.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

#include <unistd.h>

namespace quorvane::platform {
namespace {

std::string acquire(const std::filesystem::path& path, const char* program) {
    const auto outcome = ProcessLock::tryAcquire(path, program);
    const auto* refusal = std::get_if<ProcessLock::Refusal>(&outcome);
    return refusal ? refusal->reason : "acquired";
}

TEST(ProcessLockTest, ItIsHeldByOneAndNamesWho) {
    const TemporaryFolder folder;
    const auto path = folder / "store.lock";
    EXPECT_FALSE(ProcessLock::isHeld(path));
    {
        const auto lock = ProcessLock::tryAcquire(path, "quorvane");
        ASSERT_TRUE(std::holds_alternative<ProcessLock>(lock));
        EXPECT_EQ(ProcessLock::holderOf(path), (ProcessLock::Holder{.pid = getpid(), .program = "quorvane"}));
        const auto expected = "quorvane (process " + std::to_string(getpid()) + ") holds it";
        EXPECT_EQ(inOtherProcess([&] { return acquire(path, "quorvane-cli"); }), expected);
        EXPECT_EQ(acquire(path, "quorvane-cli"), expected) << "not twice in one process either";
        EXPECT_EQ(inOtherProcess([&] { return ProcessLock::holderOf(path)->program; }), "quorvane");
    }
    EXPECT_FALSE(ProcessLock::isHeld(path)) << "the file that stays means nothing";
    EXPECT_EQ(inOtherProcess([&] { return acquire(path, "quorvane-cli"); }), "acquired");
    EXPECT_EQ(acquire(path, "q"), "acquired") << "a process that has ended holds nothing";
}

TEST(ProcessLockTest, AMovedLockIsHeldOnceMoreAndNotByProgramsThatItsHolderStarts) {
    const TemporaryFolder folder;
    const auto path = folder / "store.lock";
    std::optional<ProcessLock> kept;
    {
        auto outcome = ProcessLock::tryAcquire(path, "quorvane");
        kept = std::get<ProcessLock>(std::move(outcome));
    }
    EXPECT_TRUE(ProcessLock::isHeld(path));
    ChildProcess child({"sh", "-c", "eval \"echo ready >&$0\"; sleep 60", "{ready}"});
    ASSERT_EQ(child.readyLine(), "ready");
    kept.reset();
    EXPECT_FALSE(ProcessLock::isHeld(path));
}

TEST(ProcessLockTest, AHolderWithoutANameIsAnotherProcess) {
    const TemporaryFolder folder;
    const auto path = folder / "store.lock";
    const auto lock = ProcessLock::tryAcquire(path, "quorvane");
    for (const char* content : {"", "garbage", "12x\nquorvane\n"}) {
        SCOPED_TRACE(content);
        writeFile(path, content);
        ASSERT_TRUE(ProcessLock::isHeld(path));
        EXPECT_EQ(ProcessLock::holderOf(path)->description(), "another process");
    }
}

TEST(ProcessLockTest, APlaceThatCanNotBeUsedIsExplained) {
    const TemporaryFolder folder;
    EXPECT_THAT(acquire(folder / "missing/store.lock", "q"),
                HasSubstr("missing/store.lock: No such file or directory"));
    EXPECT_THAT(acquire(folder.path(), "q"), HasSubstr("Is a directory"));
    EXPECT_FALSE(ProcessLock::isHeld(folder.path()));
}

}  // namespace
}  // namespace quorvane::platform
