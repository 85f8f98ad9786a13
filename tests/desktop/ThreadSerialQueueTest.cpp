#include "platform/linux/loop/ThreadSerialQueue.h"

#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/process/LinuxProcessUsage.h"
#include "platform/linux/system/LinuxSystemInfo.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <atomic>

namespace quorvane::platform {
namespace {

using testing::Ge;
using testing::Le;

/// Threads of this process with that name.
std::size_t threadsCalled(const std::string& name) {
    std::size_t found = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::error_code gone;
        if (std::filesystem::exists(thread.path() / "comm", gone) && contentOf(thread.path() / "comm") == name + "\n")
            ++found;
    }
    return found;
}

TEST(ThreadSerialQueueTest, RunsWorkInItsOrderOnOneThreadThatIsGoneWhenItIsDone) {
    const QtRunLoop loop;  // the test waits on it
    std::vector<int> done;
    std::atomic<std::size_t> threads = 0;
    ThreadSerialQueue queue("a-very-long-label-of-a-queue");
    EXPECT_EQ(threadsCalled("a-very-long-lab"), 0U);
    for (int i = 0; i < 100; ++i)
        queue.post([&done, i] { done.push_back(i); });
    queue.post([&] { queue.post([&] { threads = threadsCalled("a-very-long-lab"); }); });
    ASSERT_TRUE(waitUntil([&] { return threads > 0; }));
    EXPECT_EQ(threads, 1U);
    EXPECT_TRUE(waitUntil([] { return threadsCalled("a-very-long-lab") == 0; }));
    std::vector<int> expected(100);
    for (int i = 0; i < 100; ++i)
        expected[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(done, expected);
    threads = 0;
    queue.post([&] { threads = 1; });
    EXPECT_TRUE(waitUntil([&] { return threads == 1; })) << "it begins anew";
}

TEST(ThreadSerialQueueTest, ItsTimerFiresInStepAndMissesWhatALongWorkCovers) {
    const QtRunLoop loop;  // the test waits on it
    std::atomic<int> fired = 0;
    ThreadSerialQueue queue("queue");
    const auto begin = uptime();
    queue.every(0.1s, 0s, [&] { ++fired; });
    EXPECT_TRUE(waitUntil([&] { return fired == 1; }));
    EXPECT_GE(uptime() - begin, 0.1s);
    EXPECT_TRUE(waitUntil([&] { return fired == 10; }));
    EXPECT_GE(uptime() - begin, 1s);
    std::atomic<int> firedBehind = 0;
    queue.post([&] {
        const auto end = uptime() + 0.55s;
        while (uptime() < end) {
        }
        firedBehind = fired.load();
    });
    EXPECT_TRUE(waitUntil([&] { return firedBehind > 0; }));
    EXPECT_TRUE(waitUntil([&] { return fired > firedBehind; }));
    EXPECT_TRUE(staysTrue([&] { return fired <= firedBehind + 3; }, 0.1s));
}

TEST(ThreadSerialQueueTest, ATimerThatEndsTakesTheThreadAlongAndAnotherMayFollow) {
    const QtRunLoop loop;  // the test waits on it
    std::atomic<int> fired = 0;
    ThreadSerialQueue queue("timed-queue");
    for (int round = 1; round <= 2; ++round) {
        queue.every(0.02s, 0s, [&] {
            if (++fired % 3 == 0) queue.endTimer();
        });
        EXPECT_TRUE(waitUntil([&] { return fired == 3 * round && threadsCalled("timed-queue") == 0; }));
    }
}

TEST(ThreadSerialQueueTest, AStopWaitsForWhatRunsAndDropsTheRest) {
    const QtRunLoop loop;  // the test waits on it
    std::atomic<bool> isRunning = false;
    std::atomic<bool> hasEnded = false;
    std::atomic<int> late = 0;
    ThreadSerialQueue queue("queue");
    queue.post([&] {
        isRunning = true;
        const auto end = uptime() + 0.2s;
        while (uptime() < end) {
        }
        hasEnded = true;
    });
    queue.post([&] { ++late; });
    queue.every(0.01s, 0s, [&] { ++late; });
    ASSERT_TRUE(waitUntil([&] { return isRunning.load(); }));
    queue.stop();
    EXPECT_TRUE(hasEnded);
    queue.post([&] { ++late; });
    EXPECT_TRUE(staysTrue([&] { return late == 0; }, 0.1s));
}

TEST(LinuxProcessUsageTest, CountsWhatThisProcessBurnsAndHolds) {
    const LinuxProcessUsage usage;
    const auto before = usage.cpuSeconds();
    const auto begin = uptime();
    while (usage.cpuSeconds() < before + 0.2 && uptime() - begin < 10s) {
    }
    EXPECT_THAT(usage.cpuSeconds() - before, AllOf(Ge(0.2), Le(Seconds(uptime() - begin).count() + 0.5)));
    const auto memory = usage.memory();
    ASSERT_TRUE(memory);
    EXPECT_THAT(memory->resident, AllOf(Ge(1 << 20), Le(memory->physical)));
    EXPECT_GE(memory->physical, 256 << 20);
}

TEST(LinuxSystemInfoTest, NamesKernelReleaseAndMachine) {
    const auto system = linuxSystemInfo();
    EXPECT_EQ(system.name, "Linux");
    EXPECT_THAT(system.version, MatchesRegex("[0-9]+\\.[0-9]+"));
    EXPECT_FALSE(system.architecture.empty());
}

}  // namespace
}  // namespace quorvane::platform
