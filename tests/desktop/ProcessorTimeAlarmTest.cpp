#include "platform/linux/process/ProcessorTimeAlarm.h"

#include "desktop/support/Waiting.h"
#include "platform/Clock.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/UnixSignals.h"
#include "platform/linux/process/LinuxProcessUsage.h"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <gtest/gtest.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

/// Uses the processor until the condition holds, for at most so many seconds of it.
template <class Condition>
bool burnUntil(const Condition& condition, double mostCpuSeconds = 5) {
    const LinuxProcessUsage usage;
    const auto end = usage.cpuSeconds() + mostCpuSeconds;
    while (!condition() && usage.cpuSeconds() < end) {
    }
    return condition();
}

/// What the calling thread blocks, a bit for each signal.
std::uint64_t blockedSignals() {
    sigset_t set;
    pthread_sigmask(SIG_SETMASK, nullptr, &set);
    std::uint64_t bits = 0;
    for (int signal = 1; signal < 64; ++signal)
        bits |= std::uint64_t{sigismember(&set, signal) == 1} << signal;
    return bits;
}

TEST(ProcessorTimeAlarmTest, RingsOnceAfterTheUseAndNotWithTime) {
    const QtRunLoop loop;  // the test waits on it
    const LinuxProcessUsage usage;
    std::atomic<int> rung = 0;
    const auto before = usage.cpuSeconds();
    const auto alarm = usage.onceUsed(0.3, [&] { ++rung; });
    ASSERT_TRUE(alarm);
    EXPECT_TRUE(staysTrue([&] { return rung == 0; }, 0.5s));
    EXPECT_TRUE(burnUntil([&] { return rung > 0; }));
    EXPECT_GE(usage.cpuSeconds() - before, 0.3);
    EXPECT_LE(usage.cpuSeconds() - before, 0.6);
    EXPECT_FALSE(burnUntil([&] { return rung > 1; }, 0.5));
}

TEST(ProcessorTimeAlarmTest, WhatItStartsHasTheUsualSignals) {
    const QtRunLoop loop;  // the test waits on it
    const auto before = blockedSignals();
    std::atomic<std::uint64_t> inside = ~std::uint64_t{0};
    const auto alarm = ProcessorTimeAlarm::set(0.01, [&] { inside = blockedSignals(); });
    ASSERT_TRUE(alarm);
    EXPECT_TRUE(burnUntil([&] { return inside == before; }));
    EXPECT_EQ(blockedSignals(), before);
}

TEST(ProcessorTimeAlarmTest, SignalsOfOthersGoWhereTheyGoWithoutIt) {
    const QtRunLoop loop;  // the test waits on it
    int received = 0;
    const UnixSignals signals({SIGTERM, SIGRTMIN}, [&](int signal) { received = signal; });
    std::atomic<bool> hasRung = false;
    const auto alarm = ProcessorTimeAlarm::set(0.05, [&] { hasRung = true; });
    ASSERT_TRUE(alarm);
    for (const int signal : {SIGTERM, SIGRTMIN}) {
        ::kill(::getpid(), signal);
        EXPECT_TRUE(waitUntil([&] { return received == signal; }));
    }
    EXPECT_FALSE(hasRung);
    received = 0;
    EXPECT_TRUE(burnUntil([&] { return hasRung.load(); }));
    EXPECT_TRUE(staysTrue([&] { return received == 0; }, 0.1s)) << "its own is nobody else's";
}

TEST(ProcessorTimeAlarmTest, OneThatIsGoneNeverRingsHoweverCloseItsEndWas) {
    std::atomic<int> rung = 0;
    for (int i = 1; i <= 60; ++i) {
        auto alarm = ProcessorTimeAlarm::set(i * 0.0002, [&] { ++rung; });
        ASSERT_TRUE(alarm);
        burnUntil([&] { return rung > 0; }, 0.008);
        alarm.reset();
        rung = 0;
        EXPECT_FALSE(burnUntil([&] { return rung > 0; }, 0.001));
    }
}

}  // namespace
}  // namespace quorvane::platform
