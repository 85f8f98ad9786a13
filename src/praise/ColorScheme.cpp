#include "praise/ColorScheme.h"

#include "base/Fnv.h"
#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvane {
namespace {

/// Red, green and blue from 0 to 1.
struct Rgb {
    double red;
    double green;
    double blue;
};

using Components = std::array<Rgb, 10>;

constexpr Components pastel{{{0.569, 0.655, 1.0},
                             {1.0, 0.659, 0.659},
                             {0.388, 0.902, 0.745},
                             {1.0, 0.753, 0.471},
                             {0.694, 0.592, 0.988},
                             {0.4, 0.851, 0.91},
                             {0.98, 0.635, 0.757},
                             {0.753, 0.922, 0.459},
                             {0.549, 0.914, 0.604},
                             {0.933, 0.745, 0.98}}};
constexpr Components warm{{{0.482, 0.129, 0.153},
                           {0.667, 0.196, 0.204},
                           {0.91, 0.286, 0.247},
                           {0.902, 0.376, 0.22},
                           {0.969, 0.404, 0.027},
                           {0.976, 0.549, 0.098},
                           {0.984, 0.678, 0.235},
                           {0.839, 0.2, 0.424},
                           {0.949, 0.416, 0.541},
                           {1.0, 0.706, 0.596}}};
constexpr Components ocean{{{0.039, 0.204, 0.365},
                            {0.055, 0.322, 0.51},
                            {0.055, 0.455, 0.667},
                            {0.114, 0.588, 0.812},
                            {0.302, 0.706, 0.867},
                            {0.063, 0.596, 0.678},
                            {0.231, 0.788, 0.859},
                            {0.047, 0.651, 0.588},
                            {0.4, 0.851, 0.91},
                            {0.6, 0.914, 0.949}}};
constexpr Components forest{{{0.078, 0.298, 0.176},
                             {0.086, 0.392, 0.22},
                             {0.082, 0.502, 0.239},
                             {0.086, 0.639, 0.29},
                             {0.184, 0.62, 0.267},
                             {0.047, 0.651, 0.471},
                             {0.29, 0.804, 0.4},
                             {0.4, 0.659, 0.059},
                             {0.518, 0.8, 0.086},
                             {0.549, 0.914, 0.604}}};
constexpr Components purple{{{0.298, 0.114, 0.584},
                             {0.357, 0.129, 0.714},
                             {0.427, 0.157, 0.851},
                             {0.545, 0.361, 0.965},
                             {0.655, 0.545, 0.98},
                             {0.682, 0.243, 0.788},
                             {0.788, 0.31, 0.867},
                             {0.886, 0.561, 0.961},
                             {0.71, 0.09, 0.62},
                             {0.933, 0.745, 0.98}}};
constexpr Components grey{{{0.086, 0.098, 0.11},
                           {0.204, 0.227, 0.251},
                           {0.286, 0.314, 0.341},
                           {0.396, 0.427, 0.451},
                           {0.502, 0.533, 0.557},
                           {0.612, 0.643, 0.667},
                           {0.71, 0.737, 0.761},
                           {0.345, 0.369, 0.416},
                           {0.451, 0.478, 0.529},
                           {0.561, 0.588, 0.635}}};
std::uint8_t byteOf(double component) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

Color colorOf(const Rgb& rgb) {
    return {.red = byteOf(rgb.red), .green = byteOf(rgb.green), .blue = byteOf(rgb.blue)};
}

/// Hue, saturation and brightness, each from 0 to 1, the hue below it.
Color colorOf(double hue, double saturation, double brightness) {
    const auto component = [&](double sextant) {
        const double place = std::fmod(sextant + hue * 6, 6);
        return brightness * (1 - saturation * std::clamp(std::min(place, 4 - place), 0.0, 1.0));
    };
    return colorOf(Rgb{component(5), component(3), component(1)});
}

Palette paletteOf(const Components& components) {
    Palette palette;
    std::ranges::transform(components, palette.begin(), [](const Rgb& rgb) { return colorOf(rgb); });
    return palette;
}

Palette goldenPalette() {
    constexpr double goldenStep = 0.381966011;  // the smaller part of a circle divided by the golden ratio
    Palette palette;
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = colorOf(std::fmod(static_cast<double>(i) * goldenStep, 1.0), 0.7, 0.78);
    return palette;
}

}  // namespace

const Palette& colors(ColorScheme scheme) {
    static const Palette warmColors = paletteOf(warm);
    static const Palette pastelColors = paletteOf(pastel);
    static const Palette oceanColors = paletteOf(ocean);
    static const Palette forestColors = paletteOf(forest);
    static const Palette purpleColors = paletteOf(purple);
    static const Palette greyColors = paletteOf(grey);
    static const Palette goldenColors = goldenPalette();
    switch (scheme) {
    case ColorScheme::vibrant:
    case ColorScheme::sunset: return warmColors;
    case ColorScheme::pastel: return pastelColors;
    case ColorScheme::ocean: return oceanColors;
    case ColorScheme::forest: return forestColors;
    case ColorScheme::purple: return purpleColors;
    case ColorScheme::monochrome: return greyColors;
    case ColorScheme::random: return goldenColors;
    }
    return warmColors;
}

Color stableAppColor(std::string_view appName) {
    constexpr double goldenAngle = 137.507764;  // degrees
    const std::uint64_t hash = fnv1a(text::lowercased(appName));
    const double hue = std::fmod(static_cast<double>(hash % 360) * goldenAngle, 360.0) / 360;
    const double saturation = static_cast<double>((hash >> 8) % 17) / 100 + 0.62;
    const double brightness = static_cast<double>((hash >> 16) % 15) / 100 + 0.7;
    return colorOf(hue, saturation, brightness);
}

}  // namespace quorvane
