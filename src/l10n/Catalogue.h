#pragma once

#include "l10n/MessageTable.h"

#include <array>
#include <iterator>
#include <span>
#include <string_view>

namespace quorvane {

/// The texts of one language.
struct Catalogue {
    std::string_view language;                                            ///< two letters
    std::array<std::string_view, std::size(messageSignatures)> messages;  ///< in the order of `messageSignatures`
};

/// The languages that are compiled in; the first one, English, serves where no other fits.
[[nodiscard]] std::span<const Catalogue> catalogues();

}  // namespace quorvane
