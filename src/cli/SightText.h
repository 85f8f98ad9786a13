#pragma once

#include "capture/CaptureHealth.h"

#include <string>

namespace quorvane::cli {

/// "applications", for programs to match.
[[nodiscard]] const char* nameOf(platform::Sight sight);

/// "some applications and titles", for people.
[[nodiscard]] std::string sightInWords(const CaptureHealth& health);

}  // namespace quorvane::cli
