#include "platform/simulated/SimulatedRunLoop.h"

#include "base/Iso8601.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace quorvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SimulatedRunLoopTest : public testing::Test {
protected:
    /// Notes what ran, with the time since the start.
    auto noting(std::string what) {
        return [this, what] { ran.push_back(what + " " + std::to_string(static_cast<int>(loop.uptime() / 1s))); };
    }

    SimulatedRunLoop loop{*parseIso8601("2026-03-02T09:00:00Z")};
    std::vector<std::string> ran;
};

TEST_F(SimulatedRunLoopTest, WhatIsDueRunsByTimeThenByCreation) {
    const auto slow = loop.every(4s, noting("slow"));
    const auto late = loop.after(4s, noting("late"));
    const auto fast = loop.every(2s, noting("fast"));
    const auto soon = loop.after(1s, noting("soon"));
    loop.playFor(4s);
    EXPECT_THAT(ran, ElementsAre("soon 1", "fast 2", "slow 4", "late 4", "fast 4"));
    EXPECT_EQ(loop.wakeUps(), 3);
    EXPECT_EQ(loop.pendingTimers(), 2);
}

TEST_F(SimulatedRunLoopTest, PostedWorkFollowsTheTimerThatPostedIt) {
    const auto first = loop.after(1s, [&] {
        loop.post([&] {
            ran.push_back("posted");
            loop.post(noting("posted again"));
        });
        ran.push_back("first");
    });
    const auto second = loop.after(1s, noting("second"));
    loop.post(noting("before"));
    EXPECT_THAT(ran, IsEmpty());
    loop.playFor(1s);
    EXPECT_THAT(ran, ElementsAre("before 0", "first", "posted", "posted again 1", "second 1"));
}

TEST_F(SimulatedRunLoopTest, ATimerMayDestroyItselfAndOthersWhileItFires) {
    std::unique_ptr<Timer> other;
    std::unique_ptr<Timer> self;
    self = loop.every(1s, [&, note = std::string("captured text that lives in the timer's own function")] {
        self.reset();
        other.reset();
        ran.push_back(note.substr(0, 8));
    });
    other = loop.every(1s, noting("other"));
    loop.playFor(5s);
    EXPECT_THAT(ran, ElementsAre("captured"));
    EXPECT_EQ(loop.pendingTimers(), 0);
}

TEST_F(SimulatedRunLoopTest, AWorkItemMayPutAnotherInItsPlaceWhileItRuns) {
    std::unique_ptr<WorkItem> item;
    std::function<void()> again = [&] {
        ran.push_back("ran");
        if (ran.size() < 3) item = loop.after(1s, again);
    };
    item = loop.after(1s, again);
    loop.playFor(10s);
    EXPECT_THAT(ran, ElementsAre("ran", "ran", "ran"));
}

TEST_F(SimulatedRunLoopTest, AHandleMayOutliveTheLoop) {
    auto shortLived = std::make_unique<SimulatedRunLoop>(Date{});
    auto timer = shortLived->every(1s, [] {});
    shortLived.reset();
    timer.reset();
}

TEST_F(SimulatedRunLoopTest, SettingTheClockLeavesWhatIsPendingAsFarAway) {
    for (const char* set : {"2026-03-02T12:00:00Z", "2026-03-01T12:00:00Z"}) {
        SCOPED_TRACE(set);
        ran.clear();
        const auto timer = loop.every(10s, [&] { ran.push_back(iso8601Seconds(loop.now()).substr(11, 8)); });
        loop.playFor(4s);
        loop.setClock(*parseIso8601(set));
        loop.playUntil(*parseIso8601(set) + 16s);
        EXPECT_THAT(ran, ElementsAre("12:00:06", "12:00:16"));
    }
}

TEST_F(SimulatedRunLoopTest, AClockSetWhilePlayingMovesTheEndOfPlaying) {
    const auto setBack = loop.after(60s, [&] { loop.setClock(loop.now() - 30s); });
    loop.playUntil("09:02:00");
    EXPECT_EQ(loop.uptime(), 150s);
    EXPECT_EQ(loop.now(), loop.timeOfDay("09:02:00"));
}

TEST_F(SimulatedRunLoopTest, ALateTimerFiresOnceAfterSleepAndKeepsItsGrid) {
    const auto timer = loop.every(10s, noting("tick"));
    const auto item = loop.after(25s, noting("item"));
    loop.playFor(12s);
    loop.sleepFor(63s);
    EXPECT_THAT(ran, ElementsAre("tick 10"));
    loop.playFor(6s);
    EXPECT_THAT(ran, ElementsAre("tick 10", "tick 75", "item 75", "tick 80"));
}

TEST_F(SimulatedRunLoopTest, ALongDayOfSmallStepsAccumulatesNoError) {
    Date last;
    const auto timer = loop.every(0.1s, [&] { last = loop.now(); });
    loop.playUntil("18:00:00");
    EXPECT_EQ(last, *parseIso8601("2026-03-02T18:00:00Z"));
    EXPECT_EQ(microsecondsSince1970(loop.now()), 1772474400000000);
}

TEST_F(SimulatedRunLoopTest, WorkMayBePostedFromOtherThreads) {
    std::thread other([&] {
        EXPECT_FALSE(loop.isMainThread());
        loop.post([&] { EXPECT_TRUE(loop.isMainThread()); });
        loop.post(noting("from another thread"));
    });
    other.join();
    loop.runPosted();
    EXPECT_THAT(ran, ElementsAre("from another thread 0"));
}

}  // namespace
}  // namespace quorvane::platform
