#pragma once

#include "base/Color.h"

#include <optional>
#include <string>
#include <string_view>

/// The colours of applications; those of projects are in `ProjectTone.h`. Values in, values out; any thread.
namespace quorvane::AppColorPalette {

/// The colour of an application, the same on every screen and in every theme: its brand's, looked up in any case by
/// bundle identifier, then by name; without one, the hashed colour of the first of them that is there and not empty.
[[nodiscard]] Color appColor(const std::optional<std::string>& bundleId, const std::optional<std::string>& appName);

/// One of ten colours, always the same for a text. Case matters.
[[nodiscard]] Color hashedColor(std::string_view seed);

}  // namespace quorvane::AppColorPalette
