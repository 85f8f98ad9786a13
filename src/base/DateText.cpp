#include "base/DateText.h"

#include "base/Calendar.h"
#include "base/LocalTimeZone.h"

#include <map>
#include <memory>
#include <string>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <utility>

namespace quorvane {
namespace {

std::string formatted(Date date, icu::DateFormat& format) {
    // What the clocks show, as if in UTC: ICU's own zones are older than the system's.
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    // Whole microseconds first: 0.123 s must not come out as 122 ms because no double is exactly that.
    format.format(static_cast<double>(microsecondsSince1970(localTimeZone()->wallTime(date))) / 1000.0, text);
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

std::string localeDateText(Date date, const char* skeleton) {
    // Kept: to make one takes longer than to write the dates of a whole month. It belongs to one thread.
    thread_local std::map<std::pair<std::string, std::string>, std::unique_ptr<icu::DateFormat>> formats;
    auto& format = formats[{skeleton, dateLocale()}];
    UErrorCode error = U_ZERO_ERROR;
    if (!format) format.reset(icu::DateFormat::createInstanceForSkeleton(skeleton, userLocale(), error));
    return formatted(date, *format);
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
    return localeDateText(date, "yMdjm");
}

}  // namespace quorvane
