#pragma once

#include "praise/CardStyle.h"
#include "praise/ColorScheme.h"

namespace quorvane {

/// The contrast of two colours by WCAG 2, 1 to 21. Text needs 4.5, what else has a meaning 3.
[[nodiscard]] double contrast(Color a, Color b);

/// `share` (0 to 1) of `b` in `a`.
[[nodiscard]] Color mixed(Color a, Color b, double share);

/// The colour, moved towards black or white, whichever is further from the ground, until its contrast on it is at least
/// `ratio`; as far as it goes where it can't be.
[[nodiscard]] Color readable(Color wanted, Color ground, double ratio);

/// A tone between text and ground for what is less important, with a contrast of at least 5 on the ground.
[[nodiscard]] Color quiet(Color text, Color ground);

/// What a style takes from a scheme.
struct CardColors {
    Color background;  ///< on which most of the text stands
    Color text;
    Color accent;
    friend bool operator==(const CardColors&, const CardColors&) = default;
};

/// Text and accent reach 4.5 on the background.
[[nodiscard]] CardColors cardColors(CardStyle style, ColorScheme scheme);

}  // namespace quorvane
