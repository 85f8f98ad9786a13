#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// The name of the icon asset for an application under the pointer: by its bundle identifier in any case, else the
/// first in the table's order whose key is part of the name. None for all others.
[[nodiscard]] std::optional<std::string_view> hoverIconName(const std::optional<std::string>& bundleId,
                                                            const std::optional<std::string>& appName);

}  // namespace quorvane
