#include "praise/CardColors.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr Color black = colorFromRgb(0x000000);
constexpr Color white = colorFromRgb(0xFFFFFF);
constexpr double textContrast = 4.5;

/// Relative luminance of WCAG 2, 0 to 1.
double luminance(Color color) {
    const auto linear = [](std::uint8_t byte) {
        const double value = byte / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// The first colour of the scheme that reaches the contrast by itself, else its first one, moved.
Color fromScheme(const Palette& palette, Color ground, double ratio) {
    const auto found = std::ranges::find_if(palette, [&](Color color) { return contrast(color, ground) >= ratio; });
    return readable(found == palette.end() ? palette.front() : *found, ground, ratio);
}

}  // namespace

double contrast(Color a, Color b) {
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Color mixed(Color a, Color b, double share) {
    const auto mix = [share](std::uint8_t from, std::uint8_t to) {
        return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
    };
    return {.red = mix(a.red, b.red), .green = mix(a.green, b.green), .blue = mix(a.blue, b.blue)};
}

Color readable(Color wanted, Color ground, double ratio) {
    const Color end = contrast(black, ground) > contrast(white, ground) ? black : white;
    constexpr int steps = 50;
    for (int step = 0; step < steps; ++step) {
        const Color moved = mixed(wanted, end, static_cast<double>(step) / steps);
        if (contrast(moved, ground) >= ratio) return moved;
    }
    return end;
}

Color quiet(Color text, Color ground) {
    constexpr double quietContrast = 5;
    return readable(mixed(text, ground, 0.38), ground, quietContrast);
}

CardColors cardColors(CardStyle style, ColorScheme scheme) {
    const auto made = [&palette = colors(scheme)](std::uint32_t background, std::uint32_t text) {
        const Color ground = colorFromRgb(background);
        return CardColors{
            .background = ground, .text = colorFromRgb(text), .accent = fromScheme(palette, ground, textContrast)};
    };
    const auto fixed = [](std::uint32_t background, std::uint32_t text, std::uint32_t accent) {
        return CardColors{
            .background = colorFromRgb(background), .text = colorFromRgb(text), .accent = colorFromRgb(accent)};
    };
    switch (style) {
    case CardStyle::clean: return made(0xFFFFFF, 0x171C24);
    case CardStyle::elegantShadow: return made(0xFFFFFF, 0x1D1933);
    case CardStyle::glassmorphism: return made(0xE9DDF6, 0x1B1238);
    case CardStyle::neumorphism: return made(0xE6EBF2, 0x22354F);
    case CardStyle::gradientCard: {
        const Palette& palette = colors(scheme);
        // White stands on both ends and on all that lies between them.
        const auto deepened = [](Color color) {
            while (contrast(color, white) < textContrast + 0.6)
                color = mixed(color, black, 0.05);
            return color;
        };
        return {.background = deepened(palette[1]), .text = white, .accent = deepened(palette[4])};
    }
    case CardStyle::darkMode: {
        // The lightest of those that are still a colour.
        CardColors chosen = made(0x171C20, 0xECEFF2);
        const Palette& palette = colors(scheme);
        for (const Color color : palette)
            if (luminance(color) > luminance(chosen.accent) && luminance(color) < 0.5) chosen.accent = color;
        return chosen;
    }
    case CardStyle::businessCard: return fixed(0xFDFDFB, 0x1A2230, 0x1F3A63);
    case CardStyle::artistic: {
        CardColors chosen = made(0xFCF2E5, 0x000000);
        chosen.text = mixed(colors(scheme).front(), black, 0.72);
        return chosen;
    }
    case CardStyle::minimal: return made(0xFAFAF8, 0x16181A);
    case CardStyle::luxury: return fixed(0x15130F, 0xF6E9C8, 0xD8B673);
    case CardStyle::techFuture: return fixed(0x07131F, 0xEAF6FF, 0x38D6F0);
    case CardStyle::warmPaper: return made(0xFAF1DF, 0x3F2C1D);
    }
    return made(0xFFFFFF, 0x171C24);
}

}  // namespace quorvane
