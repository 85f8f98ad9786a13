#include "tracking/ActivityTrackingPolicy.h"

#include <algorithm>
#include <array>

namespace quorvane::ActivityTrackingPolicy {
namespace {

constexpr std::array<std::string_view, 10> browserBundleIds{
    "com.apple.Safari",           "com.google.Chrome",        "com.brave.Browser",   "com.microsoft.Edge",
    "company.thebrowser.Browser", "com.google.Chrome.canary", "com.vivaldi.Vivaldi", "com.operasoftware.Opera",
    "org.mozilla.firefox",        "com.microsoft.edgemac"};

}  // namespace

Seconds effectiveIdle(const IdleReading& reading) {
    if (reading.inGrace) return 0s;
    return reading.isMonitoring ? std::min(reading.systemIdle, reading.inputIdle) : reading.systemIdle;
}

bool isWithinForegroundGrace(std::optional<Date> activatedAt, Date now, Seconds interval) {
    return activatedAt && now - *activatedAt < interval;
}

bool isBrowser(std::string_view bundleId) {
    return std::find(browserBundleIds.begin(), browserBundleIds.end(), bundleId) != browserBundleIds.end();
}

}  // namespace quorvane::ActivityTrackingPolicy
