#include "base/TimeText.h"

#include <fmt/format.h>

namespace quorvane {

std::int64_t wholeSeconds(Seconds length) {
    return microsecondsSince1970(Date{length}) / 1'000'000;
}

std::int64_t wholeMinutes(Seconds length) {
    return wholeSeconds(length) / 60;
}

std::string clockText(Seconds sinceMidnight) {
    const auto minutes = wholeMinutes(sinceMidnight);
    return fmt::format("{:02}:{:02}", minutes / 60, minutes % 60);
}

std::string lengthText(Seconds length) {
    const auto minutes = wholeMinutes(length);
    if (minutes < 60) return fmt::format("{}m", minutes);
    return minutes % 60 == 0 ? fmt::format("{}h", minutes / 60) : fmt::format("{}h{}m", minutes / 60, minutes % 60);
}

}  // namespace quorvane
