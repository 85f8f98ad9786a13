#include "diagnostics/performance/PerformanceStackCapture.h"

#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedStackSampler.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::MatchesRegex;

class PerformanceStackCaptureTest : public testing::Test {
protected:
    TemporaryFolder folder;
    platform::SimulatedRunLoop loop{dateFromSecondsSince1970(1'772'000'000)};
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger{loop, systemLog, console, {}};
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
    const struct {
        const char* name;
        std::function<void(platform::SimulatedStackSampler&)> script;
        const char* line;
        int terminations = 0;
    } rows[] = {
        {"missing", [](auto& tool) { tool.installed = false; }, "找不到 /usr/bin/eu-stack，跳过抓栈"},
        {"refuses", [](auto& tool) { tool.refusal = "No memory"; }, "启动 eu-stack 失败：No memory"},
        {"fails", [](auto& tool) { tool.status = 2; }, "eu-stack 退出码 2，未拿到调用栈（沙盒构建下属预期）"},
        {"is empty", [](auto& tool) { tool.text.clear(); }, "eu-stack 退出码 0，未拿到调用栈（沙盒构建下属预期）"},
        {"is no UTF-8", [](auto& tool) { tool.text = "a\xff"; }, "eu-stack 退出码 0，未拿到调用栈（沙盒构建下属预期）"},
        {"hangs", [](auto& tool) { tool.needs = 122.5s; }, "eu-stack 超时未结束，已终止", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        sampler = {};
        console.clear();
        row.script(sampler);
        EXPECT_EQ(stackCapture.capture(2), std::nullopt);
        EXPECT_THAT(console.lines(),
                    ElementsAre(EndsWith(std::string("[WARNING] [PerfWatchdog] 性能报告：") + row.line)));
        EXPECT_EQ(sampler.terminations, row.terminations);
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
