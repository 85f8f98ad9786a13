#include "base/Date.h"

#include "base/Iso8601.h"

#include <cmath>
#include <limits>

namespace quorvane {

std::int64_t microsecondsSince1970(Date date) {
    const double microseconds = std::round(secondsSince1970(date) * 1e6);
    // The largest doubles that fit: 2^63 itself does not.
    constexpr double limit = 9223372036854774784.0;
    if (std::isnan(microseconds)) return 0;
    if (microseconds >= limit) return std::numeric_limits<std::int64_t>::max();
    if (microseconds <= -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(microseconds);
}

std::string describe(Date date) {
    std::string text = iso8601Seconds(date);  // 2026-03-04T15:00:00Z
    text[10] = ' ';
    text.replace(text.size() - 1, 1, " +0000");
    return text;
}

}  // namespace quorvane
