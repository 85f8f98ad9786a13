#include "base/Date.h"

#include "base/Iso8601.h"

#include <cmath>
#include <limits>

namespace quorvane {

std::int64_t microsecondsSince1970(Date date) {
    const double seconds = secondsSince1970(date);
    constexpr double limit = 9'223'372'036'854.0;  // more whole seconds do not fit
    if (std::isnan(seconds)) return 0;
    if (seconds >= limit) return std::numeric_limits<std::int64_t>::max();
    if (seconds <= -limit) return std::numeric_limits<std::int64_t>::min();
    // Seconds and their fraction apart: one product of both would round a second time and err after 2106.
    const double whole = std::floor(seconds);
    return static_cast<std::int64_t>(whole) * 1'000'000 + std::llround((seconds - whole) * 1e6);
}

std::string describe(Date date) {
    std::string text = iso8601Seconds(date);  // 2026-03-04T15:00:00Z
    text[10] = ' ';
    text.replace(text.size() - 1, 1, " +0000");
    return text;
}

}  // namespace quorvane
