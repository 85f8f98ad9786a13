#include "diagnostics/performance/PerformanceStackCapture.h"

#include "platform/simulated/SimulatedStackSampler.h"
#include "support/LoggingTest.h"
#include "support/TemporaryFolder.h"

namespace quorvane {
namespace {

class PerformanceStackCaptureTest : public LoggingTest {
protected:
    TemporaryFolder folder;
    platform::SimulatedStackSampler sampler;
    PerformanceStackCapture stackCapture{sampler, logger, folder.path()};
};

TEST_F(PerformanceStackCaptureTest, GivesTheToolsTextAndKeepsNoFile) {
    sampler.text = "TID 7:\n#0 日志";
    EXPECT_EQ(stackCapture.capture(2), "TID 7:\n#0 日志");
    EXPECT_THAT(sampler.lastOutput.filename().string(), MatchesRegex("quorvane-perf-[0-9A-F-]+\\.txt"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(PerformanceStackCaptureTest, EveryOtherEndIsAWarningAndNoTextAndNoFile) {
    using Tool = platform::SimulatedStackSampler;
    const std::pair<std::function<void(Tool&)>, const char*> rows[] = {
        {[](Tool& tool) { tool.installed = false; }, "找不到 /usr/bin/eu-stack，跳过抓栈"},
        {[](Tool& tool) { tool.refusal = "No memory"; }, "启动 eu-stack 失败：No memory"},
        {[](Tool& tool) { tool.status = 2; }, "eu-stack 退出码 2，未拿到调用栈（沙盒构建下属预期）"},
        {[](Tool& tool) { tool.text.clear(); }, "eu-stack 退出码 0，未拿到调用栈（沙盒构建下属预期）"},
        {[](Tool& tool) { tool.text = "a\xff"; }, "eu-stack 退出码 0，未拿到调用栈（沙盒构建下属预期）"},
        {[](Tool& tool) { tool.needs = 122.5s; }, "eu-stack 超时未结束，已终止"}};
    for (const auto& [script, line] : rows) {
        SCOPED_TRACE(line);
        sampler = {};
        console.clear();
        script(sampler);
        EXPECT_EQ(stackCapture.capture(2), std::nullopt);
        EXPECT_THAT(console.lines(), ElementsAre(EndsWith(std::string("[WARNING] [PerfWatchdog] 性能报告：") + line)));
        EXPECT_EQ(sampler.terminations, sampler.needs > 100s ? 1 : 0);
        EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    }
}

TEST_F(PerformanceStackCaptureTest, ASlowToolIsWaitedForUntilAStopIsAskedFor) {
    sampler.needs = 121.5s;
    EXPECT_EQ(stackCapture.capture(2), "stacks\n");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(stackCapture.capture(2, stop.get_token()), std::nullopt);
    EXPECT_EQ(sampler.terminations, 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_THAT(console.lines(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
