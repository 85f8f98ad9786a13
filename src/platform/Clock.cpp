#include "platform/Clock.h"

#include <atomic>
#include <ctime>

namespace quorvane::platform {
namespace {

std::atomic<const ClockOverride*> newestOverride = nullptr;

}  // namespace

ClockOverride::ClockOverride(std::function<Date()> now) : now_(std::move(now)), outer_(newestOverride) {
    newestOverride = this;
}

ClockOverride::~ClockOverride() {
    newestOverride = outer_;
}

Date currentDate() {
    if (const auto* override = newestOverride.load()) return override->now_();
    const auto now = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    return dateFromMicroseconds(now.time_since_epoch().count());
}

Seconds uptime() {
#ifdef CLOCK_BOOTTIME
    timespec since{};
    if (::clock_gettime(CLOCK_BOOTTIME, &since) == 0)
        return std::chrono::seconds{since.tv_sec} + std::chrono::nanoseconds{since.tv_nsec};
#endif
    return std::chrono::steady_clock::now().time_since_epoch();
}

}  // namespace quorvane::platform
