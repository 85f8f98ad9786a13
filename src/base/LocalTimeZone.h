#pragma once

#include "base/TimeZone.h"

#include <memory>
#include <string>

/// Where zones come from. The system's rules count: /usr/share/zoneinfo, or the folder that TZDIR names. They change
/// more often than libraries do. From any thread.
namespace quorvane {

/// What a value of TZ means, as the C library reads it: a name ("Europe/Berlin"), a path, rules ("CET-1CEST,M3.5.0,
/// M10.5.0/3"), each with or without a colon before it. A name that the system does not have is looked up in ICU's own
/// rules; what nobody knows is UTC.
[[nodiscard]] TimeZone timeZone(const std::string& value);

/// The user's: of TZ, else of /etc/localtime. A file is looked at each time, which takes a microsecond, so that a
/// change counts at once. The same object for as long as nothing has changed.
[[nodiscard]] std::shared_ptr<const TimeZone> localTimeZone();

}  // namespace quorvane
