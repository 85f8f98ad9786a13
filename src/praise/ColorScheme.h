#pragma once

#include "base/Color.h"
#include "base/RawValue.h"

#include <array>
#include <string_view>

namespace quorvane {

/// Which colours a share card gives to applications. All of them in order: `RawValues<ColorScheme>::table`.
enum class ColorScheme { vibrant, pastel, ocean, sunset, forest, purple, monochrome, random };

template <>
struct RawValues<ColorScheme> {
    static constexpr RawValueTable<ColorScheme, 8> table{{{ColorScheme::vibrant, "vibrant"},
                                                          {ColorScheme::pastel, "pastel"},
                                                          {ColorScheme::ocean, "ocean"},
                                                          {ColorScheme::sunset, "sunset"},
                                                          {ColorScheme::forest, "forest"},
                                                          {ColorScheme::purple, "purple"},
                                                          {ColorScheme::monochrome, "monochrome"},
                                                          {ColorScheme::random, "random"}}};
};

using Palette = std::array<Color, 10>;

/// The colours of a scheme in the order in which applications get them. `vibrant` and `sunset` share theirs; `random`
/// goes round the hues in steps of the golden ratio and is the same each time.
[[nodiscard]] const Palette& colors(ColorScheme scheme);

/// The same colour for a name each time, in any case, where no palette applies.
[[nodiscard]] Color stableAppColor(std::string_view appName);

}  // namespace quorvane
