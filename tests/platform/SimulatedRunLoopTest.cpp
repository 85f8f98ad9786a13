#include "platform/simulated/SimulatedRunLoop.h"

#include "base/Iso8601.h"

#include <gmock/gmock.h>
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

TEST_F(SimulatedRunLoopTest, PostedWorkFollowsTheTimerThatPostedItFromWhateverThread) {
    const auto first = loop.after(1s, [&] {
        std::thread([&] { loop.post(noting("posted")); }).join();
        ran.push_back("first");
    });
    const auto second = loop.after(1s, noting("second"));
    loop.post(noting("before"));
    EXPECT_THAT(ran, IsEmpty());
    loop.playFor(1s);
    EXPECT_THAT(ran, ElementsAre("before 0", "first", "posted 1", "second 1"));
}

TEST_F(SimulatedRunLoopTest, AFiringTimerMayEndItselfAndOthersAndAnItemMayReplaceItself) {
    std::unique_ptr<Timer> self;
    std::unique_ptr<Timer> other;
    std::unique_ptr<WorkItem> item;
    self = loop.every(1s, [&, note = std::string("captured text that lives in the timer's own function")] {
        self.reset();
        other.reset();
        ran.push_back(note.substr(0, 8));
    });
    other = loop.every(1s, noting("other"));
    item = loop.after(2s, [&] { item = loop.after(1s, noting("again")); });
    loop.playFor(5s);
    EXPECT_THAT(ran, ElementsAre("captured", "again 3"));
    EXPECT_EQ(loop.pendingTimers(), 0);
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

TEST_F(SimulatedRunLoopTest, ALateTimerFiresOnceAfterSleepAndKeepsItsGrid) {
    const auto timer = loop.every(10s, noting("tick"));
    const auto item = loop.after(25s, noting("item"));
    loop.playFor(12s);
    loop.sleepFor(63s);
    EXPECT_THAT(ran, ElementsAre("tick 10"));
    loop.playFor(6s);
    EXPECT_THAT(ran, ElementsAre("tick 10", "tick 75", "item 75", "tick 80"));
}

}  // namespace
}  // namespace quorvane::platform
