#include "updates/ZelkorUpdateConfiguration.h"

#include "base/Url.h"

#include <fmt/format.h>

namespace quorvane::ZelkorUpdateConfiguration {
namespace {

constexpr std::string_view path = "/api/v1/public/app-updates/appcast.xml";
constexpr std::string_view query = "app_id=quorvane&platform=linux&channel=stable";

std::optional<std::string> url(std::string_view host, std::string_view suffix) {
    auto made = fmt::format("https://{}{}{}?{}", host, path, suffix, query);
    const auto parts = urlParts(made);
    // Read back, the path shows whether the host was nothing but a host; a user before it is none of ours.
    const bool isHost = parts && !parts->host.empty() && parts->path == fmt::format("{}{}", path, suffix) &&
                        host.find('@') == std::string_view::npos;
    return isHost ? std::optional(std::move(made)) : std::nullopt;
}

}  // namespace

std::optional<std::string> feedURL(std::string_view host) {
    return url(host, "");
}

std::optional<std::string> signatureURL(std::string_view host) {
    return url(host, ".sig");
}

std::string feedName(std::string_view host) {
    return fmt::format("{}{}", host, path);
}

}  // namespace quorvane::ZelkorUpdateConfiguration
