#include "diagnostics/performance/MemoryMonitor.h"

#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedProcessUsage.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(MemoryMonitorTest, WritesWhatIsUsedToTheSystemsLogInWholeMebibytes) {
    platform::SimulatedRunLoop loop(dateFromSecondsSince1970(1'772'000'000));
    platform::RecordingSystemLog log;
    platform::SimulatedProcessUsage usage;
    {
        MemoryMonitor monitor(loop, log, usage);
        monitor.start();
        usage.setMemory(platform::MemoryUse{.resident = (50 << 20) + 1'000'000, .physical = std::int64_t{8000} << 20});
        loop.playFor(30s);
        usage.setMemory(std::nullopt);
        loop.playFor(29s);
        monitor.start(1.5s);
        loop.playFor(1.5s);
        monitor.stop();
        loop.playFor(100s);
        monitor.start(1s);
    }
    loop.playFor(100s);
    std::vector<std::string> lines;
    for (const auto& line : log.lines()) {
        EXPECT_EQ(line.type, platform::SystemLogType::standard);
        lines.push_back(line.text);
    }
    EXPECT_THAT(lines,
                ElementsAre("内存监控已启动，间隔: 30.000000秒",
                            "内存使用情况 - 已使用: 50MB, 可用: 7950MB, 总计: 8000MB", "内存监控已停止",
                            "内存监控已启动，间隔: 1.500000秒", "内存使用情况 - 已使用: 0MB, 可用: 0MB, 总计: 0MB",
                            "内存监控已停止", "内存监控已启动，间隔: 1.000000秒", "内存监控已停止",
                            "MemoryMonitor: deinit - 清理资源"));
}

}  // namespace
}  // namespace quorvane
