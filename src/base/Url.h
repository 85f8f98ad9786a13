#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// The host of a URL with a scheme, as it is written there: without user, port and the brackets of an IPv6 address,
/// percent escapes decoded. None if the text is no such URL or has no host.
[[nodiscard]] std::optional<std::string> urlHost(std::string_view url);

}  // namespace quorvane
