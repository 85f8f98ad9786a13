#include "session/TerminalColor.h"

#include "base/Environment.h"

#include <fmt/format.h>
#include <unistd.h>

namespace quorvane {
namespace {

/// The "select graphic rendition" parameters for a 24-bit colour.
std::string parameters(int layer, Color color) {
    return fmt::format("{};2;{};{};{}", layer, color.red, color.green, color.blue);
}

constexpr int foreground = 38;
constexpr int background = 48;

/// Perceived brightness by the weights of ITU-R BT.601, 0 to 255,000.
int brightness(Color color) {
    return 299 * color.red + 587 * color.green + 114 * color.blue;
}

}  // namespace

TerminalColor TerminalColor::ofStandardOutput() {
    return TerminalColor(::isatty(STDOUT_FILENO) == 1 && environment("NO_COLOR").empty() &&
                         environment("TERM") != "dumb");
}

std::string TerminalColor::colored(std::string_view text, Color color) const {
    if (!isOn_ || text.empty()) return std::string(text);
    return fmt::format("\x1b[{}m{}\x1b[0m", parameters(foreground, color), text);
}

std::string TerminalColor::onGround(std::string_view text, Color ground) const {
    if (!isOn_ || text.empty()) return std::string(text);
    const Color ink = colorFromRgb(brightness(ground) > 150'000 ? 0x000000 : 0xFFFFFF);
    return fmt::format("\x1b[{};{}m{}\x1b[0m", parameters(foreground, ink), parameters(background, ground), text);
}

}  // namespace quorvane
