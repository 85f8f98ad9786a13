#include "platform/linux/bus/SessionLock.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

class SessionLockTest : public testing::Test {
protected:
    SimulatedRunLoop runLoop{dateFromSecondsSince1970(1'772'000'000)};
    std::vector<bool> changes;
    SessionLock lock{runLoop, [this](bool isLocked) { changes.push_back(isLocked); }};
};

TEST_F(SessionLockTest, ARequestThatNobodyConfirmsIsForgotten) {
    lock.noteRequest(true);
    runLoop.playFor(3s);
    EXPECT_TRUE(lock.isLocked());
    runLoop.playFor(30s);
    EXPECT_FALSE(lock.isLocked());
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(SessionLockTest, AConfirmedLockLastsUntilItsEnd) {
    lock.noteRequest(true);
    runLoop.playFor(1s);
    lock.noteState(true);
    lock.noteRequest(true);
    runLoop.playFor(3600s);
    EXPECT_TRUE(lock.isDoubtful());
    lock.noteState(false);
    EXPECT_FALSE(lock.isDoubtful());
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(SessionLockTest, AnUnlockEndsAnUnconfirmedLockAtOnceAndOnce) {
    lock.noteRequest(true);
    lock.noteRequest(false);
    lock.noteState(false);
    runLoop.playFor(30s);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(SessionLockTest, WhatWasSoAtTheStartIsNoChange) {
    lock.begin(true);
    EXPECT_TRUE(lock.isLocked());
    lock.noteState(true);
    EXPECT_THAT(changes, ElementsAre());
    lock.noteState(false);
    EXPECT_THAT(changes, ElementsAre(false));
}

}  // namespace
}  // namespace quorvane::platform
