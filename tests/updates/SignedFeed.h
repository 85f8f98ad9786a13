#pragma once

#include <string>
#include <string_view>

namespace quorvane {

/// The key that the tests sign with, and the half of it that the application knows, in base64.
[[nodiscard]] std::string testPublicKey();

/// The signature of the bytes in base64; `author` picks one of several keys, the first is `testPublicKey`'s.
[[nodiscard]] std::string signatureOf(std::string_view bytes, unsigned char author = 1);

/// A feed around these items.
[[nodiscard]] std::string feedOf(std::string_view items);

/// An item of such a feed.
[[nodiscard]] std::string feedItem(std::string_view version, std::string_view build,
                                   std::string_view link = "https://example.org/get");

}  // namespace quorvane
