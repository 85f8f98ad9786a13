#include "base/DateText.h"

#include "base/Calendar.h"

#include <memory>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace quorvane {
namespace {

std::string formatted(Date date, icu::DateFormat& format) {
    format.adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(currentZone())));
    icu::UnicodeString text;
    // Whole microseconds first: 0.123 s must not come out as 122 ms because no double is exactly that.
    format.format(static_cast<double>(microsecondsSince1970(date)) / 1000.0, text);
    std::string out;
    return text.toUTF8String(out);
}

icu::Locale userLocale() {
    return icu::Locale::createCanonical(dateLocale().c_str());
}

}  // namespace

std::string localDateText(Date date, const char* pattern) {
    UErrorCode error = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString::fromUTF8(pattern), icu::Locale::getRoot(), error);
    return formatted(date, format);
}

std::string mediumDateTime(Date date) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kMedium, userLocale()));
    return formatted(date, *format);
}

std::string mediumDate(Date date) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, userLocale()));
    return formatted(date, *format);
}

std::string longDate(Date date) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateInstance(icu::DateFormat::kLong, userLocale()));
    return formatted(date, *format);
}

std::string mediumDateShortTime(Date date) {
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kShort, userLocale()));
    return formatted(date, *format);
}

std::string numericDateShortTime(Date date) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createInstanceForSkeleton("yMdjm", userLocale(), error));
    return formatted(date, *format);
}

}  // namespace quorvane
