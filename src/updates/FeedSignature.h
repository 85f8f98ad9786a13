#pragma once

#include <array>
#include <optional>
#include <string_view>

/// Ed25519 signatures of whole files.
namespace quorvane::FeedSignature {

using PublicKey = std::array<unsigned char, 32>;

/// From base64; none for anything else than a key's bytes.
[[nodiscard]] std::optional<PublicKey> publicKey(std::string_view base64);

/// Is `base64`, blanks and line ends around it aside, the signature of just these bytes with this key's secret half?
[[nodiscard]] bool verifies(std::string_view bytes, std::string_view base64, const PublicKey& key);

}  // namespace quorvane::FeedSignature
