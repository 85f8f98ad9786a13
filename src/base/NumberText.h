#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers as the user's locale writes them, the first set of LC_ALL, LC_NUMERIC, LANG. From any thread.
namespace quorvane {

/// With two to six decimals and no groups, as a field shows what can be edited: "1234.50".
[[nodiscard]] std::string decimalText(double number);

/// The number that the whole text is, blanks around it aside; groups of digits are allowed where the locale puts them.
/// None for any other text, and for what isn't finite.
[[nodiscard]] std::optional<double> decimalFrom(std::string_view text);

}  // namespace quorvane
