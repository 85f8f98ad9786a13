#include "timeline/CalendarTitles.h"

#include "base/Calendar.h"

#include <memory>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

namespace quorvane {
namespace {

std::string formatted(Date date, const char* skeleton) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createInstanceForSkeleton(
        skeleton, icu::Locale::createCanonical(dateLocale().c_str()), error));
    format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(currentZone())));
    icu::UnicodeString text;
    format->format(secondsSince1970(date) * 1000, text);
    std::string out;
    return text.toUTF8String(out);
}

}  // namespace

std::string shortWeekday(Date date) {
    return formatted(date, "ccc");
}

std::string monthAndYear(Date date) {
    return formatted(date, "yMMMM");
}

std::string weekdayAndDay(Date date) {
    return formatted(date, "EEEMMMd");
}

}  // namespace quorvane
