#include "capture/AppleScriptManager.h"
#include "platform/Clock.h"
#include "platform/simulated/SimulatedAutomation.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/ThreadedRunLoop.h"

#include <future>

namespace quorvane {
namespace {

using platform::Script;

/// Runs on real threads; the build with the thread sanitizer finds what they share.
class AppleScriptExclusionTest : public testing::Test {
protected:
    RecordingConsole console;
    platform::SimulatedAutomation automation;
    ThreadedRunLoop runLoop;  // before the manager: its threads outlive it
    AppleScriptManager scripts{runLoop, automation, console, platform::uptime};
};

TEST_F(AppleScriptExclusionTest, ACallDuringAnotherOnAnyThreadLosesAtOnceAndDoesNotDisturbIt) {
    runLoop.runToTheEnd();
    console.clear();
    std::promise<void> isRunning;
    std::promise<void> mayEnd;
    automation.answer([&](const Script&) {
        isRunning.set_value();
        mayEnd.get_future().wait();
        return "https://slow.example/";
    });
    std::optional<std::string> first;
    runLoop.background([&] { first = scripts.executeScript("safari"); });
    isRunning.get_future().wait();
    const auto second = scripts.executeScript("safari");
    const auto third = scripts.executeScript("lynx");
    mayEnd.set_value();
    runLoop.runToTheEnd();
    EXPECT_EQ(first, "https://slow.example/");
    EXPECT_EQ(second, std::nullopt);
    EXPECT_EQ(third, std::nullopt);
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: ⚠️ 检测到重入调用，跳过执行: safari",
                                             "AppleScriptManager: ⚠️ 检测到重入调用，跳过执行: lynx"));
    EXPECT_EQ(scripts.getExecutionStatistics().at("safari").executionCount, 1);
    automation.answer([](const Script&) { return "next"; });
    EXPECT_EQ(scripts.executeScript("arc"), "next");
}

TEST_F(AppleScriptExclusionTest, LoadingRunningCountingAndClearingMayMeet) {
    automation.answer([](const Script&) { return "x"; });
    for (int i = 0; i < 4; ++i)
        runLoop.background([this] {
            for (int run = 0; run < 200; ++run) {
                (void)scripts.executeScript("opera");
                (void)scripts.hasCompiledScript("opera");
                (void)scripts.getExecutionStatistics();
            }
        });
    runLoop.background([this] { scripts.clearAllCaches(); });
    runLoop.runToTheEnd();
    for (const auto& [name, statistics] : scripts.getExecutionStatistics())
        EXPECT_LE(statistics.executionCount, 800) << name;
}

}  // namespace
}  // namespace quorvane
