#include "session/LocalTime.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {

std::string LocalTime::dateAndTime(Date date) const {
    const auto at = calendar_.components(date);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", at.year, at.month, at.day, at.hour, at.minute, at.second);
}

std::string LocalTime::time(Date date) const {
    const auto at = calendar_.components(date);
    return fmt::format("{:02}:{:02}:{:02}", at.hour, at.minute, at.second);
}

std::string durationText(Seconds duration) {
    // Longer than any two dates are apart; it keeps the number in range.
    constexpr Seconds longest{1e12};
    const auto seconds = static_cast<std::int64_t>(std::clamp(duration, Seconds{0}, longest).count());
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace quorvane
