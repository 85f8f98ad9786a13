#include "billing/MoneyText.h"

#include "base/Environment.h"

#include <fmt/format.h>
#include <string_view>
#include <unicode/currunit.h>
#include <unicode/numberformatter.h>

namespace quorvane {
namespace {

/// ICU writes the C locale's money with a blank behind the sign and without groups; nobody means that by it.
icu::Locale moneyLocale() {
    for (const char* name : {"LC_ALL", "LC_MONETARY", "LANG"}) {
        const auto locale = environment(name);
        if (locale.empty()) continue;
        if (locale == "C" || locale == "POSIX" || locale.starts_with("C.")) break;
        return icu::Locale::createCanonical(locale.c_str());
    }
    return icu::Locale::getUS();
}

}  // namespace

std::string moneyText(double amount, const std::string& currencyCode) {
    // ICU looks at three letters alone, and takes none for the currency that nobody knows.
    UErrorCode error = currencyCode.size() == 3 ? U_ZERO_ERROR : U_ILLEGAL_ARGUMENT_ERROR;
    icu::UnicodeString code = icu::UnicodeString::fromUTF8(currencyCode);
    const icu::CurrencyUnit currency(code.getTerminatedBuffer(), error);
    const auto formatted =
        icu::number::NumberFormatter::withLocale(moneyLocale()).unit(currency).formatDouble(amount, error);
    const icu::UnicodeString written = formatted.toString(error);
    if (U_FAILURE(error) != 0) return fmt::format("{:.2f} {}", amount, currencyCode);
    std::string text;
    return written.toUTF8String(text);
}

}  // namespace quorvane
