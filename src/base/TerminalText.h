#pragma once

#include <string>
#include <string_view>

namespace quorvane {

/// A text from outside in one line that no terminal takes for a command: control characters and line ends become
/// blanks, marks that turn the direction of writing go.
[[nodiscard]] std::string harmlessLine(std::string_view text);

}  // namespace quorvane
