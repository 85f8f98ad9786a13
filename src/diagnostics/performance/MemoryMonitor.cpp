#include "diagnostics/performance/MemoryMonitor.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr auto info = platform::SystemLogType::standard;

}  // namespace

MemoryMonitor::MemoryMonitor(platform::RunLoop& runLoop, platform::SystemLog& systemLog,
                             const platform::ProcessUsage& usage)
    : runLoop_(runLoop), systemLog_(systemLog), usage_(usage) {}

MemoryMonitor::~MemoryMonitor() {
    if (timer_) stop();
    systemLog_.write(info, "MemoryMonitor: deinit - 清理资源");
}

void MemoryMonitor::start(Seconds interval) {
    if (timer_) stop();
    timer_ = runLoop_.every(interval, [this] { write(); });  // the timer dies with the monitor
    systemLog_.write(info, fmt::format("内存监控已启动，间隔: {:f}秒", interval.count()));
}

void MemoryMonitor::stop() {
    timer_.reset();
    systemLog_.write(info, "内存监控已停止");
}

void MemoryMonitor::write() {
    std::int64_t used = 0;
    std::int64_t total = 0;
    if (const auto memory = usage_.memory()) {  // in MiB, each rounded down
        used = memory->resident >> 20;
        total = memory->physical >> 20;
    }
    systemLog_.write(info,
                     fmt::format("内存使用情况 - 已使用: {}MB, 可用: {}MB, 总计: {}MB", used, total - used, total));
}

}  // namespace quorvane
