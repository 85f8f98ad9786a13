#pragma once

#include <cstdint>
#include <string_view>

namespace quorvane {

/// The 64-bit FNV-1a hash of the bytes, with the offset basis and the prime that its authors publish. Stored values
/// and colours depend on it: it must never change.
[[nodiscard]] constexpr std::uint64_t fnv1a(std::string_view bytes) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return hash;
}

}  // namespace quorvane
