#pragma once

#include <string>

namespace quorvane {

/// An amount as the user's locale for money (the first set of LC_ALL, LC_MONETARY, LANG) writes it in this currency:
/// "€6,639.25". A code that is no currency's follows the number: "6639.25 XX".
[[nodiscard]] std::string moneyText(double amount, const std::string& currencyCode);

}  // namespace quorvane
