#include "updates/FeedSignature.h"

#include "base/Text.h"

#include <sodium.h>
#include <string>

namespace quorvane::FeedSignature {
namespace {

static_assert(std::tuple_size_v<PublicKey> == crypto_sign_PUBLICKEYBYTES);

template <std::size_t size>
std::optional<std::array<unsigned char, size>> decoded(std::string_view base64) {
    std::array<unsigned char, size> bytes{};
    std::size_t length = 0;
    const int failed = sodium_base642bin(bytes.data(), bytes.size(), base64.data(), base64.size(), nullptr, &length,
                                         nullptr, sodium_base64_VARIANT_ORIGINAL);
    return failed == 0 && length == size ? std::optional(bytes) : std::nullopt;
}

const unsigned char* data(std::string_view bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

}  // namespace

std::optional<PublicKey> publicKey(std::string_view base64) {
    return decoded<crypto_sign_PUBLICKEYBYTES>(base64);
}

bool verifies(std::string_view bytes, std::string_view base64, const PublicKey& key) {
    const auto signature = decoded<crypto_sign_BYTES>(text::trimmedWithNewlines(base64));
    return signature && sodium_init() >= 0 &&
           crypto_sign_verify_detached(signature->data(), data(bytes), bytes.size(), key.data()) == 0;
}

}  // namespace quorvane::FeedSignature
