#include "billing/FileNameTime.h"

#include "base/Calendar.h"

#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace quorvane {
namespace {

icu::SimpleDateFormat makeFormatter() {
    UErrorCode error = U_ZERO_ERROR;
    icu::SimpleDateFormat formatter("yyyy-MM-dd_HH-mm-ss", icu::Locale::createCanonical(dateLocale().c_str()), error);
    formatter.adoptTimeZone(icu::TimeZone::detectHostTimeZone());
    return formatter;
}

}  // namespace

std::string fileNameTime(Date date) {
    static const icu::SimpleDateFormat formatter = makeFormatter();
    icu::UnicodeString written;
    std::string out;
    return formatter.format(secondsSince1970(date) * 1000.0, written).toUTF8String(out);
}

}  // namespace quorvane
