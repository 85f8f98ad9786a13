#pragma once

#include "base/Date.h"

#include <cstdint>
#include <string>

/// Times of day and lengths as people read them. What lies below the smallest unit is cut off, and never more: the sums
/// of fractions that instants and hours are made of count in whole microseconds, so that 10:04 does not read 10:03.
namespace quorvane {

[[nodiscard]] std::int64_t wholeSeconds(Seconds length);
[[nodiscard]] std::int64_t wholeMinutes(Seconds length);

/// "09:05", counted from midnight.
[[nodiscard]] std::string clockText(Seconds sinceMidnight);

/// "50m", "2h", "1h5m"
[[nodiscard]] std::string lengthText(Seconds length);

}  // namespace quorvane
