#include "session/LocalTime.h"

#include "base/TimeText.h"

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
    const auto seconds = std::max<std::int64_t>(wholeSeconds(duration), 0);
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace quorvane
