#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

/// An opaque sRGB colour.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend constexpr bool operator==(const Color&, const Color&) = default;
};

/// From 0xRRGGBB.
[[nodiscard]] constexpr Color colorFromRgb(std::uint32_t rgb) {
    return {.red = static_cast<std::uint8_t>(rgb >> 16 & 0xFF),
            .green = static_cast<std::uint8_t>(rgb >> 8 & 0xFF),
            .blue = static_cast<std::uint8_t>(rgb & 0xFF)};
}

/// "#RRGGBB", upper case.
[[nodiscard]] std::string hexText(Color color);

}  // namespace quorvane
