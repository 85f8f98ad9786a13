#pragma once

#include "base/TimeZone.h"

#include <optional>
#include <string_view>

namespace quorvane {

/// The zone in the bytes of a file of /usr/share/zoneinfo (TZif, RFC 8536); none if they are no such file, or a broken
/// one. Leap seconds that it tells of are not counted, as nothing here counts them.
[[nodiscard]] std::optional<TimeZone> readTimeZoneFile(std::string_view bytes);

}  // namespace quorvane
