#include "base/Url.h"

#include <algorithm>
#include <charconv>

namespace quorvane {
namespace {

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isScheme(std::string_view text) {
    return !text.empty() && isAsciiLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
        return isAsciiLetter(c) || isAsciiDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

/// What stands before the first colon, if that is a scheme.
std::optional<std::string_view> schemeOf(std::string_view url) {
    const auto colon = url.find(':');
    if (colon == std::string_view::npos || !isScheme(url.substr(0, colon))) return std::nullopt;
    return url.substr(0, colon);
}

/// What stands between "//" and the path, query or fragment, in what follows the scheme and its colon.
std::optional<std::string_view> authorityOf(std::string_view afterScheme) {
    if (!afterScheme.starts_with("//")) return std::nullopt;
    afterScheme.remove_prefix(2);
    return afterScheme.substr(0, afterScheme.find_first_of("/?#"));
}

/// Takes the host off the front of "host:port"; none if what follows is no port.
std::optional<std::string_view> withoutPort(std::string_view text) {
    const auto end = text.starts_with('[') ? text.find(']') : text.find(':');
    if (end == std::string_view::npos) return text.starts_with('[') ? std::nullopt : std::optional(text);
    const bool isBracketed = text[end] == ']';
    const auto rest = text.substr(isBracketed ? end + 1 : end);
    if (!rest.empty() && (rest.front() != ':' || !std::all_of(rest.begin() + 1, rest.end(), isAsciiDigit)))
        return std::nullopt;
    return isBracketed ? text.substr(1, end - 1) : text.substr(0, end);
}

/// None if the text holds what neither host nor path can, or an escape that is none.
std::optional<std::string> decoded(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (static_cast<unsigned char>(c) <= 0x20 ||
            std::string_view("\"<>[\\]^`{|}\x7f").find(c) != std::string_view::npos)
            return std::nullopt;
        unsigned value = static_cast<unsigned char>(c);
        if (c == '%') {
            const auto digits = text.substr(i + 1, 2);
            const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
            if (digits.size() != 2 || error != std::errc{} || end != digits.data() + 2) return std::nullopt;
            i += 2;
        }
        out += static_cast<char>(value);
    }
    return out;
}

/// The host between user and port, empty for none; none if it can't be one.
std::optional<std::string> hostIn(std::string_view authority) {
    const auto user = authority.rfind('@');
    const auto host = withoutPort(user == std::string_view::npos ? authority : authority.substr(user + 1));
    return host ? decoded(*host) : std::nullopt;
}

}  // namespace

std::optional<std::string> urlHost(std::string_view url) {
    const auto scheme = schemeOf(url);
    const auto authority = scheme ? authorityOf(url.substr(scheme->size() + 1)) : std::nullopt;
    auto host = authority ? hostIn(*authority) : std::nullopt;
    return host && !host->empty() ? host : std::nullopt;
}

std::optional<UrlParts> urlParts(std::string_view url) {
    const auto scheme = schemeOf(url);
    if (!scheme) return std::nullopt;
    auto rest = url.substr(scheme->size() + 1);
    std::optional<std::string> host = "";
    if (const auto authority = authorityOf(rest)) {
        host = hostIn(*authority);
        rest.remove_prefix(2 + authority->size());
    }
    auto path = decoded(rest.substr(0, rest.find_first_of("?#")));
    if (!host || !path) return std::nullopt;
    return UrlParts{.scheme = std::string(*scheme), .host = std::move(*host), .path = std::move(*path)};
}

}  // namespace quorvane
