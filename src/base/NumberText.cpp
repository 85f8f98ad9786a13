#include "base/NumberText.h"

#include "base/Environment.h"
#include "base/Text.h"

#include <cmath>
#include <memory>
#include <unicode/numfmt.h>
#include <unicode/parsepos.h>

namespace quorvane {
namespace {

icu::Locale numberLocale() {
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        if (const auto value = environment(name); !value.empty()) return icu::Locale::createCanonical(value.c_str());
    }
    return icu::Locale("en_US_POSIX");
}

/// None where the locale's numbers can't be loaded.
std::unique_ptr<icu::NumberFormat> decimalFormat() {
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(numberLocale(), error));
    return U_SUCCESS(error) ? std::move(format) : nullptr;
}

}  // namespace

std::string decimalText(double number) {
    std::string out;
    if (const auto format = decimalFormat()) {
        format->setGroupingUsed(false);
        format->setMinimumFractionDigits(2);
        format->setMaximumFractionDigits(6);
        icu::UnicodeString written;
        format->format(number, written).toUTF8String(out);
    }
    return out;
}

std::optional<double> decimalFrom(std::string_view text) {
    const auto format = decimalFormat();
    const auto typed = icu::UnicodeString::fromUTF8(text::trimmed(text));
    if (format == nullptr || typed.isEmpty()) return std::nullopt;
    format->setLenient(false);  // "85,00" is no 8500 where the comma stands between thousands
    icu::Formattable parsed;
    icu::ParsePosition position(0);
    format->parse(typed, parsed, position);
    if (position.getIndex() != typed.length()) return std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    const double number = parsed.getDouble(error);
    return U_SUCCESS(error) && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace quorvane
