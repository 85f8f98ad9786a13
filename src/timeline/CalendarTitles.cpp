#include "timeline/CalendarTitles.h"

#include "base/Calendar.h"
#include "base/DateText.h"
#include "base/LocalTimeZone.h"

#include <memory>
#include <unicode/dtitvfmt.h>
#include <unicode/timezone.h>

namespace quorvane {

std::string shortWeekday(Date date) {
    return localeDateText(date, "ccc");
}

std::string monthAndYear(Date date) {
    return localeDateText(date, "yMMMM");
}

std::string weekdayAndDay(Date date) {
    return localeDateText(date, "EEEMMMd");
}

std::string dayTitle(Date date) {
    return localeDateText(date, "yMMMMEEEd");
}

std::string daysTitle(DateInterval range) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateIntervalFormat> format(
        icu::DateIntervalFormat::createInstance("yMMMMd", icu::Locale::createCanonical(dateLocale().c_str()), error));
    format->setTimeZone(*icu::TimeZone::getGMT());  // what the clocks show, as if in UTC
    const auto zone = localTimeZone();
    const icu::DateInterval interval(secondsSince1970(zone->wallTime(range.start)) * 1000,
                                     secondsSince1970(zone->wallTime(range.end - 1s)) * 1000);
    icu::UnicodeString text;
    icu::FieldPosition position;
    format->format(&interval, text, position, error);
    std::string out;
    return text.toUTF8String(out);
}

}  // namespace quorvane
