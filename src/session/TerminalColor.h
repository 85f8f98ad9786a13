#pragma once

#include "base/Color.h"

#include <string>
#include <string_view>

namespace quorvane {

/// Colours for people who read a terminal; texts stay as they are where colours are off.
class TerminalColor {
public:
    explicit TerminalColor(bool isOn) : isOn_(isOn) {}

    /// On when standard output is a terminal that knows more than text and NO_COLOR is unset or empty.
    [[nodiscard]] static TerminalColor ofStandardOutput();

    [[nodiscard]] bool isOn() const { return isOn_; }

    /// The text in this colour.
    [[nodiscard]] std::string colored(std::string_view text, Color color) const;

    /// The text on a ground of this colour, in black or white, whichever can be read on it.
    [[nodiscard]] std::string onGround(std::string_view text, Color ground) const;

private:
    bool isOn_;
};

}  // namespace quorvane
