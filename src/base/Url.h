#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// The host of a URL with a scheme, as it is written there: without user, port and the brackets of an IPv6 address,
/// percent escapes decoded. None if the text is no such URL or has no host.
[[nodiscard]] std::optional<std::string> urlHost(std::string_view url);

/// What a URL with a scheme consists of. Query and fragment are left out.
struct UrlParts {
    std::string scheme;  ///< as it is written, without the colon
    std::string host;    ///< as `urlHost` has it; empty for none
    std::string path;    ///< percent escapes decoded; empty for none
    friend bool operator==(const UrlParts&, const UrlParts&) = default;
};

/// None if the text has no scheme, or holds a host or path that no URL can. Characters beyond ASCII need no escapes.
[[nodiscard]] std::optional<UrlParts> urlParts(std::string_view url);

}  // namespace quorvane
