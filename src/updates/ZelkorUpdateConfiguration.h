#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Where the feed of versions lies.
namespace quorvane::ZelkorUpdateConfiguration {

/// The feed on the maker's host, which may have a port ("updates.example.org:8443"). None if there is no host, or if
/// what is given is none.
[[nodiscard]] std::optional<std::string> feedURL(std::string_view host);

/// Beside the feed lies its signature: the same address, with ".sig" after the path.
[[nodiscard]] std::optional<std::string> signatureURL(std::string_view host);

/// Host and path: what the log calls the feed. Addresses with a scheme would be redacted there.
[[nodiscard]] std::string feedName(std::string_view host);

}  // namespace quorvane::ZelkorUpdateConfiguration
