#include "platform/linux/process/LinuxProcessUsage.h"

#include "platform/linux/process/ProcessorTimeAlarm.h"
#include "platform/linux/system/WholeFile.h"

#include <charconv>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

double LinuxProcessUsage::cpuSeconds() const {
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) return 0;
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

std::unique_ptr<UsageAlarm> LinuxProcessUsage::onceUsed(double cpuSeconds, std::function<void()> fire) const {
    return ProcessorTimeAlarm::set(cpuSeconds, std::move(fire));
}

std::optional<MemoryUse> LinuxProcessUsage::memory() const {
    const auto counts = wholeFile("/proc/self/statm");  // in pages: all, then what is resident
    const auto pageSize = sysconf(_SC_PAGESIZE);
    const auto pages = sysconf(_SC_PHYS_PAGES);
    if (!counts || pageSize <= 0 || pages <= 0) return std::nullopt;
    std::int64_t resident = 0;
    const auto* const begin = counts->data() + counts->find(' ') + 1;
    if (std::from_chars(begin, counts->data() + counts->size(), resident).ec != std::errc()) return std::nullopt;
    return MemoryUse{.resident = resident * pageSize, .physical = std::int64_t{pages} * pageSize};
}

}  // namespace quorvane::platform
