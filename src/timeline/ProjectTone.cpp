#include "timeline/ProjectTone.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quorvane::AppColorPalette {
namespace {

constexpr ProjectTone tone(std::uint32_t fill, std::uint32_t accent) {
    return {.fill = colorFromRgb(fill), .accent = colorFromRgb(accent)};
}

constexpr std::array<std::string_view, 16> names{"mint",   "sky",  "rose",   "lilac", "teal",  "apricot",
                                                 "lemon",  "fog",  "red",    "blue",  "green", "orange",
                                                 "purple", "pink", "yellow", "cyan"};

constexpr std::array<ProjectTone, names.size()> tones{
    tone(0xBDF0DA, 0x12B886), tone(0xC2DBFA, 0x1C7ED6), tone(0xFBD1D8, 0xE64980), tone(0xDCCFF5, 0x7950F2),
    tone(0xC4E8E8, 0x0C8599), tone(0xFFE3C0, 0xE8590C), tone(0xF7EFB8, 0xB08900), tone(0xD9E3EC, 0x5C6B7A),
    tone(0xFFC9C9, 0xE03131), tone(0xBAC8FF, 0x4263EB), tone(0xC3F0CA, 0x2F9E44), tone(0xFFD8A8, 0xF76707),
    tone(0xEEBEFA, 0xAE3EC9), tone(0xFFB8D9, 0xD6336C), tone(0xFFEC99, 0xE67700), tone(0xB8ECF5, 0x1098AD)};

constexpr std::size_t fog = 7;
static_assert(names[fog] == "fog");

}  // namespace

std::span<const std::string_view> projectToneNames() {
    return names;
}

ProjectTone projectTone(std::string_view name) {
    const auto found = std::ranges::find(names, text::lowercased(name));
    return tones[found == names.end() ? fog : static_cast<std::size_t>(found - names.begin())];
}

Color projectColor(std::string_view name, bool accent) {
    const ProjectTone tone = projectTone(name);
    return accent ? tone.accent : tone.fill;
}

}  // namespace quorvane::AppColorPalette
