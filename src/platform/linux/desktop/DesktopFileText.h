#pragma once

#include <string>
#include <string_view>

namespace quorvane::platform {

/// A text as the value of a key in a desktop file.
[[nodiscard]] std::string desktopValue(std::string_view text);

/// A path as one argument of an Exec line: in quotes, and then as any value.
[[nodiscard]] std::string desktopArgument(std::string_view path);

}  // namespace quorvane::platform
