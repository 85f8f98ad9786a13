#pragma once

#include <string>
#include <vector>

namespace quorvane {

/// The languages that the user wants for words, best first, as "de" or "zh", without country and encoding: the entries
/// of LANGUAGE, else the first set of LC_ALL, LC_MESSAGES and LANG. The C locale counts as English. Empty where nothing
/// is set.
[[nodiscard]] std::vector<std::string> preferredLanguages();

}  // namespace quorvane
