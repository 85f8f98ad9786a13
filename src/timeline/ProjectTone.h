#pragma once

#include "base/Color.h"

#include <span>
#include <string_view>

namespace quorvane {

/// The colours of a project.
struct ProjectTone {
    Color fill;    ///< pale, for areas
    Color accent;  ///< saturated, for text and lines
    friend bool operator==(const ProjectTone&, const ProjectTone&) = default;
};

namespace AppColorPalette {

/// The names of all tones, in the order in which they are offered.
[[nodiscard]] std::span<const std::string_view> projectToneNames();

/// The tone with this name, in any case; any other name, and an empty one for none, has the tone "fog".
[[nodiscard]] ProjectTone projectTone(std::string_view name);

/// `fill` of that tone, or its `accent`.
[[nodiscard]] Color projectColor(std::string_view name, bool accent);

}  // namespace AppColorPalette
}  // namespace quorvane
