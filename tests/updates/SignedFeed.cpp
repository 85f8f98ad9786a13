#include "updates/SignedFeed.h"

#include <array>
#include <fmt/format.h>
#include <sodium.h>

namespace quorvane {
namespace {

struct KeyPair {
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey{};
};

KeyPair keysOf(unsigned char author) {
    std::array<unsigned char, crypto_sign_SEEDBYTES> seed{};
    seed.fill(author);
    KeyPair keys;
    crypto_sign_seed_keypair(keys.publicKey.data(), keys.secretKey.data(), seed.data());
    return keys;
}

template <std::size_t size>
std::string base64(const std::array<unsigned char, size>& bytes) {
    std::string text(sodium_base64_ENCODED_LEN(size, sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), size, sodium_base64_VARIANT_ORIGINAL);
    text.pop_back();
    return text;
}

}  // namespace

std::string testPublicKey() {
    return base64(keysOf(1).publicKey);
}

std::string signatureOf(std::string_view bytes, unsigned char author) {
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                         keysOf(author).secretKey.data());
    return base64(signature);
}

std::string feedOf(std::string_view items) {
    return fmt::format(R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:v="https://example.org/versions"><channel><title>Quorvane</title>{}</channel></rss>
)",
                       items);
}

std::string feedItem(std::string_view version, std::string_view build, std::string_view link) {
    return fmt::format("<item><title>Quorvane {0}</title><link>{2}</link><v:shortVersionString>{0}"
                       "</v:shortVersionString><v:version>{1}</v:version>"
                       "<description><![CDATA[<ul><li>Faster</li><li>Calmer</li></ul>]]></description></item>",
                       version, build, link);
}

}  // namespace quorvane
