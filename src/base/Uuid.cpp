#include "base/Uuid.h"

#include <cerrno>
#include <cstring>
#include <system_error>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr char digits[] = "0123456789ABCDEF";

constexpr bool hyphenBefore(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

/// From the system's random source, which is asked for many at once: each object that a fetch makes begins with an id.
std::array<std::uint8_t, 16> randomBytes() {
    thread_local std::array<std::array<std::uint8_t, 16>, 16> supply;  // 256 bytes: the most that one call gives
    thread_local std::size_t left = 0;
    if (left == 0) {
        if (getentropy(supply.data(), sizeof supply) != 0)
            throw std::system_error(errno, std::generic_category(), "no random numbers");
        left = supply.size();
    }
    return supply[--left];
}

}  // namespace

Uuid Uuid::random() {
    std::array<std::uint8_t, 16> bytes = randomBytes();
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // variant of RFC 4122
    return Uuid(bytes);
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    std::array<std::uint8_t, 16> bytes{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (hyphenBefore(i) && text[at++] != '-') return std::nullopt;
        const int high = digitValue(text[at]);
        const int low = digitValue(text[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
        at += 2;
    }
    return Uuid(bytes);
}

std::string Uuid::string() const {
    std::string out;
    appendTo(out);
    return out;
}

void Uuid::appendTo(std::string& out) const {
    char text[36];
    char* next = text;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (hyphenBefore(i)) *next++ = '-';
        *next++ = digits[bytes_[i] >> 4];
        *next++ = digits[bytes_[i] & 0x0F];
    }
    out.append(text, sizeof text);
}

}  // namespace quorvane

std::size_t std::hash<quorvane::Uuid>::operator()(const quorvane::Uuid& uuid) const noexcept {
    std::uint64_t halves[2];
    std::memcpy(halves, uuid.bytes().data(), sizeof halves);
    return static_cast<std::size_t>(halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15ULL));
}
