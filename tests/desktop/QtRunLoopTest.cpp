#include "platform/linux/loop/QtRunLoop.h"
#include "desktop/support/Waiting.h"
#include "platform/InBackground.h"
#include "support/Matching.h"

#include <atomic>
#include <thread>

namespace quorvane::platform {
namespace {

using testing::Ge;
using testing::Le;

TEST(QtRunLoopTest, ATimerMayDestroyItselfWhileItFires) {
    QtRunLoop runLoop;
    std::vector<int> fired;
    std::unique_ptr<Timer> timer;
    std::unique_ptr<WorkItem> item;
    const auto state = std::make_shared<int>(7);
    timer = runLoop.every(0.01s, [&, state] {
        timer.reset();
        fired.push_back(*state);
    });
    item = runLoop.after(0.03s, [&, state] {
        item.reset();
        fired.push_back(*state + 1);
    });
    ASSERT_TRUE(waitUntil([&] { return fired.size() == 2; }));
    EXPECT_TRUE(staysTrue([&] { return fired.size() == 2; }, 0.1s));
    EXPECT_THAT(fired, ElementsAre(7, 8));
    EXPECT_TRUE(waitUntil([&] { return state.use_count() == 1; })) << "nothing of them stays behind";
}

TEST(QtRunLoopTest, ATimerFiresOnceWhenItIsLateAndThenAgainAndAgainUntilItIsDestroyed) {
    QtRunLoop runLoop;
    int fired = 0;
    auto timer = runLoop.every(0.05s, [&] { ++fired; });
    std::this_thread::sleep_for(0.22s);  // what keeps the loop busy, four intervals long
    EXPECT_EQ(fired, 0);
    ASSERT_TRUE(waitUntil([&] { return fired > 0; }));
    EXPECT_EQ(fired, 1);
    const auto first = uptime();
    ASSERT_TRUE(waitUntil([&] { return fired == 3; }));
    EXPECT_GE(uptime() - first, 0.055s);
    timer.reset();
    EXPECT_TRUE(staysTrue([&] { return fired == 3; }, 0.1s));
}

TEST(QtRunLoopTest, RunsAllThatIsPostedAndNothingElse) {
    QtRunLoop runLoop;
    int left = 1000;
    bool fired = false;
    const auto item = runLoop.after(0s, [&] { fired = true; });
    const std::function<void()> next = [&] {
        if (--left > 0) runLoop.post(next);
    };
    runLoop.post(next);
    runLoop.runPosted();
    EXPECT_EQ(left, 0);
    EXPECT_FALSE(fired);
}

TEST(QtRunLoopTest, AWorkItemRunsOnceUnlessItIsCancelled) {
    QtRunLoop runLoop;
    std::vector<std::string> ran;
    const auto kept = runLoop.after(0.05s, [&] { ran.push_back("kept"); });
    const auto atOnce = runLoop.after(0s, [&] { ran.push_back("at once"); });
    auto cancelled = runLoop.after(0.01s, [&] { ran.push_back("cancelled"); });
    cancelled.reset();
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(waitUntil([&] { return ran.size() == 2; }));
    EXPECT_TRUE(staysTrue([&] { return ran.size() == 2; }, 0.1s));
    EXPECT_THAT(ran, ElementsAre("at once", "kept"));
}

TEST(QtRunLoopTest, PostedWorkRunsLaterOnTheMainThreadInOrder) {
    QtRunLoop runLoop;
    std::vector<int> ran;
    EXPECT_TRUE(runLoop.isMainThread());
    runLoop.post([&] {
        runLoop.post([&] { ran.push_back(3); });
        ran.push_back(1);
    });
    runLoop.post([&] { ran.push_back(2); });
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(waitUntil([&] { return ran.size() == 3; }));
    std::jthread([&] {
        EXPECT_FALSE(runLoop.isMainThread());
        runLoop.post([&] { ran.push_back(runLoop.isMainThread() ? 4 : -4); });
    });
    ASSERT_TRUE(waitUntil([&] { return ran.size() == 4; }));
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST(QtRunLoopTest, OneSlowWorkerDoesNotHoldUpTheOthersAndIsAwaitedAtTheEndWhichHandlesMayOutlive) {
    std::atomic<bool> isReleased = false;
    std::atomic<bool> isDone = false;
    std::unique_ptr<Timer> timer;
    std::unique_ptr<WorkItem> item;
    {
        QtRunLoop runLoop;
        timer = runLoop.every(1s, [] {});
        item = runLoop.after(1s, [] {});
        std::vector<bool> onMainThread;
        runLoop.background([&] {
            isReleased.wait(false);
            isDone = true;
        });
        inBackground(
            runLoop, [&] { return runLoop.isMainThread(); },
            [&](std::future<bool> worker) {
                onMainThread = {worker.get(), runLoop.isMainThread()};
            });
        EXPECT_TRUE(waitUntil([&] { return !onMainThread.empty(); }));
        EXPECT_THAT(onMainThread, ElementsAre(false, true));
        isReleased = true;
        isReleased.notify_all();
    }
    EXPECT_TRUE(isDone);
}

TEST(QtRunLoopTest, RunEndsWithTheStatusOfQuit) {
    QtRunLoop runLoop;
    const auto item = runLoop.after(0.01s, [&] { runLoop.quit(3); });
    EXPECT_EQ(runLoop.run(), 3);
    runLoop.quit(4);
    EXPECT_EQ(runLoop.run(), 4) << "also when asked before it began";
}

TEST(QtRunLoopTest, BetweenTimersTheProcessRests) {
    QtRunLoop runLoop;
    const auto tick = runLoop.every(10s, [] {});
    const auto maintenance = runLoop.every(300s, [] {});
    runLoop.background([] {});
    (void)wakeUpsDuring(0.05s);
    EXPECT_THAT(wakeUpsDuring(0.5s), Le(2)) << "the end of the measurement is one";
}

TEST(QtRunLoopTest, TheClockShowsWholeMicroseconds) {
    QtRunLoop runLoop;
    const auto now = runLoop.now();
    EXPECT_EQ(dateFromMicroseconds(microsecondsSince1970(now)), now);
    EXPECT_THAT(Seconds(std::chrono::system_clock::now() - now).count(), AllOf(Ge(0), Le(1)));
}

}  // namespace
}  // namespace quorvane::platform
