#pragma once

#include "base/Date.h"

#include <string>

namespace quorvane {

/// The instant as exported files bear it in their names, "2026-03-04_15-00-00", in the user's zone and in the locale
/// that the user had when the first one was made. Main thread only.
[[nodiscard]] std::string fileNameTime(Date date);

}  // namespace quorvane
