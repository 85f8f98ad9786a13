#include "timeline/CalendarTitles.h"

#include "base/Calendar.h"

#include <memory>
#include <unicode/datefmt.h>
#include <unicode/dtitvfmt.h>
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

std::string dayTitle(Date date) {
    return formatted(date, "yMMMMEEEd");
}

std::string daysTitle(DateInterval range) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateIntervalFormat> format(
        icu::DateIntervalFormat::createInstance("yMMMMd", icu::Locale::createCanonical(dateLocale().c_str()), error));
    format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(currentZone())));
    const icu::DateInterval interval(secondsSince1970(range.start) * 1000, secondsSince1970(range.end - 1s) * 1000);
    icu::UnicodeString text;
    icu::FieldPosition position;
    format->format(&interval, text, position, error);
    std::string out;
    return text.toUTF8String(out);
}

}  // namespace quorvane
