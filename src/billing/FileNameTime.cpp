#include "billing/FileNameTime.h"

#include "base/Calendar.h"
#include "base/LocalTimeZone.h"

#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace quorvane {
namespace {

icu::SimpleDateFormat makeFormatter() {
    UErrorCode error = U_ZERO_ERROR;
    icu::SimpleDateFormat formatter("yyyy-MM-dd_HH-mm-ss", icu::Locale::createCanonical(dateLocale().c_str()), error);
    formatter.setTimeZone(*icu::TimeZone::getGMT());  // what the clocks show, as if in UTC
    return formatter;
}

}  // namespace

std::string fileNameTime(Date date) {
    static const icu::SimpleDateFormat formatter = makeFormatter();
    icu::UnicodeString written;
    std::string out;
    return formatter.format(secondsSince1970(localTimeZone()->wallTime(date)) * 1000.0, written).toUTF8String(out);
}

}  // namespace quorvane
