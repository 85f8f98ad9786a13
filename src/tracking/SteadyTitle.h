#pragma once

#include <string>
#include <string_view>

namespace quorvane {

/// A window's title without what changes while nobody turns to anything else: counters in brackets, spinners,
/// percentages, clocks, marks of unsaved changes. Words alone remain, with one space between them; for comparison and
/// not for people. Made after titles of mail and chat programs, editors, terminals, players and download windows.
[[nodiscard]] std::string steadyTitle(std::string_view title);

}  // namespace quorvane
