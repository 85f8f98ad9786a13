#include "platform/InBackground.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InBackgroundTest : public testing::Test {
protected:
    SimulatedRunLoop loop{Date{}};
    std::vector<std::string> heard;
};

TEST_F(InBackgroundTest, WorkRunsOffTheMainThreadAndItsResultComesBackOnIt) {
    inBackground(
        loop,
        [&] {
            heard.push_back(loop.isMainThread() ? "main" : "worker");
            return 42;
        },
        [&](std::future<int> result) {
            heard.push_back((loop.isMainThread() ? "main " : "worker ") + std::to_string(result.get()));
        });
    EXPECT_THAT(heard, IsEmpty());
    loop.runPosted();
    EXPECT_THAT(heard, ElementsAre("worker", "main 42"));
}

TEST_F(InBackgroundTest, WhatTheWorkThrowsComesOutOfTheResult) {
    inBackground(
        loop, [] { throw std::runtime_error("gone"); },
        [&](std::future<void> result) {
            try {
                result.get();
            } catch (const std::runtime_error& error) {
                heard.push_back(error.what());
            }
        });
    loop.runPosted();
    EXPECT_THAT(heard, ElementsAre("gone"));
}

TEST_F(InBackgroundTest, HeldWorkWaitsUntilItIsReleased) {
    loop.background([&] { heard.push_back("asked before"); });
    loop.holdBackground();
    loop.background([&] { heard.push_back("asked while held"); });
    loop.post([&] { heard.push_back("posted"); });
    loop.playFor(3600s);
    EXPECT_THAT(heard, ElementsAre("posted"));
    loop.releaseBackground();
    EXPECT_THAT(heard, ElementsAre("posted"));
    loop.runPosted();
    EXPECT_THAT(heard, ElementsAre("posted", "asked before", "asked while held"));
}

}  // namespace
}  // namespace quorvane::platform
