#include "tracking/ActivityTrackingPolicy.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvane::ActivityTrackingPolicy {
namespace {

constexpr std::array<std::string_view, 10> browserBundleIds{
    "com.apple.Safari",           "com.google.Chrome",        "com.brave.Browser",   "com.microsoft.Edge",
    "company.thebrowser.Browser", "com.google.Chrome.canary", "com.vivaldi.Vivaldi", "com.operasoftware.Opera",
    "org.mozilla.firefox",        "com.microsoft.edgemac"};

constexpr Seconds largestCorrection = 2s;

}  // namespace

Seconds effectiveIdle(const IdleReading& reading) {
    if (reading.inGrace) return 0s;
    const Seconds untouched =
        reading.isMonitoring ? std::min(reading.systemIdle, reading.inputIdle) : reading.systemIdle;
    return std::min(untouched, reading.sinceQuietPresence.value_or(untouched));
}

bool isWithinForegroundGrace(std::optional<Seconds> activatedAt, Seconds uptime, Seconds interval) {
    return activatedAt && uptime - *activatedAt < interval;
}

bool isUnbroken(const ClockLook& before, const ClockLook& after, Seconds longest) {
    const Seconds passed = after.uptime - before.uptime;
    const Seconds step = (after.now - before.now) - passed;
    return passed <= longest && std::abs(step.count()) <= largestCorrection.count();
}

bool isBrowser(std::string_view bundleId) {
    return std::find(browserBundleIds.begin(), browserBundleIds.end(), bundleId) != browserBundleIds.end();
}

}  // namespace quorvane::ActivityTrackingPolicy
