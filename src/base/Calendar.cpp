#include "base/Calendar.h"

#include "base/LocalTimeZone.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

namespace quorvane {
namespace {

icu::Locale localeFrom(const std::string& name) {
    return icu::Locale::createCanonical(name.c_str());
}

int field(const icu::Calendar& calendar, UCalendarDateFields which) {
    UErrorCode error = U_ZERO_ERROR;
    return calendar.get(which, error);
}

void clearTimeOfDay(icu::Calendar& calendar) {
    for (const auto which : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        calendar.set(which, 0);
}

}  // namespace

/// ICU counts the days; the zone says what the clocks show. So ICU's calendars all stand in UTC, where no hour is
/// missing.
struct Calendar::Impl {
    Impl(std::unique_ptr<icu::Calendar> made, std::shared_ptr<const TimeZone> itsZone)
        : calendar(std::move(made)), zone(std::move(itsZone)) {
        calendar->setLenient(true);
    }

    /// A Gregorian calendar in the same zone: the one in which days are named on the command line and in files.
    [[nodiscard]] std::unique_ptr<icu::Calendar> gregorian() const {
        UErrorCode error = U_ZERO_ERROR;
        auto made = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), icu::Locale::getRoot(), error);
        made->setGregorianChange(std::numeric_limits<UDate>::lowest(), error);
        return made;
    }

    icu::Calendar& at(Date date) const {
        set(*calendar, date);
        return *calendar;
    }

    void set(icu::Calendar& target, Date date) const {
        // Whole microseconds: what a sum of fractions lacks must not turn a second back into the one before.
        UErrorCode error = U_ZERO_ERROR;
        target.setTime(static_cast<double>(microsecondsSince1970(zone->wallTime(date))) / 1000.0, error);
    }

    [[nodiscard]] Date read(const icu::Calendar& source) const {
        UErrorCode error = U_ZERO_ERROR;
        return zone->instant(dateFromSecondsSince1970(source.getTime(error) / 1000.0));
    }
    [[nodiscard]] Date read() const { return read(*calendar); }

    Date adding(UCalendarDateFields unit, int amount, Date date) const {
        if (amount == 0) return date;  // an hour that comes twice is the same one still
        // ICU counts milliseconds and may drop what is finer.
        const auto microseconds = std::chrono::microseconds{microsecondsSince1970(date)};
        const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(microseconds);
        UErrorCode error = U_ZERO_ERROR;
        at(Date{milliseconds}).add(unit, amount, error);
        return read() + (microseconds - milliseconds);
    }

    std::unique_ptr<icu::Calendar> calendar;
    std::shared_ptr<const TimeZone> zone;
};

Calendar::Calendar(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

Calendar::Calendar(const std::string& locale, const std::string& zone)
    : Calendar(locale, std::make_shared<const TimeZone>(quorvane::timeZone(zone))) {}

Calendar::Calendar(const std::string& locale, std::shared_ptr<const TimeZone> zone) {
    UErrorCode error = U_ZERO_ERROR;
    impl_ = std::make_unique<Impl>(std::unique_ptr<icu::Calendar>(icu::Calendar::createInstance(
                                       *icu::TimeZone::getGMT(), localeFrom(locale), error)),
                                   std::move(zone));
}

Calendar::Calendar(const Calendar& other)
    : impl_(std::make_unique<Impl>(std::unique_ptr<icu::Calendar>(other.impl_->calendar->clone()), other.timeZone())) {}
Calendar& Calendar::operator=(const Calendar& other) {
    return *this = Calendar(other);
}
Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;
Calendar::~Calendar() = default;

std::string dateLocale() {
    std::string locale = "C";
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0') {
            locale = value;
            break;
        }
    }
    // ICU does not know the C locale by its name and would begin its weeks on Monday.
    return locale == "C" || locale == "POSIX" || locale.starts_with("C.") ? "en_US_POSIX" : locale;
}

Calendar Calendar::current() {
    return {dateLocale(), localTimeZone()};
}

Calendar Calendar::mondayFirst(const Calendar& other) {
    auto calendar = other.impl_->gregorian();
    calendar->setFirstDayOfWeek(UCAL_MONDAY);
    return Calendar(std::make_unique<Impl>(std::move(calendar), other.timeZone()));
}

int Calendar::firstWeekday() const {
    UErrorCode error = U_ZERO_ERROR;
    return impl_->calendar->getFirstDayOfWeek(error);
}

DateComponents Calendar::components(Date date) const {
    const auto& at = impl_->at(date);
    return {.year = field(at, UCAL_YEAR),
            .month = field(at, UCAL_MONTH) + 1,
            .day = field(at, UCAL_DATE),
            .hour = field(at, UCAL_HOUR_OF_DAY),
            .minute = field(at, UCAL_MINUTE),
            .second = field(at, UCAL_SECOND),
            .weekday = field(at, UCAL_DAY_OF_WEEK)};
}

Date Calendar::date(CivilDate day, int hour, int minute, double second) const {
    const auto calendar = impl_->gregorian();
    const double whole = std::floor(second);
    calendar->clear();
    calendar->set(day.year, day.month - 1, day.day, hour, minute, static_cast<int>(whole));
    return impl_->read(*calendar) + Seconds{second - whole};
}

CivilDate Calendar::civilDate(Date date) const {
    const auto calendar = impl_->gregorian();
    impl_->set(*calendar, date);
    return {field(*calendar, UCAL_YEAR), field(*calendar, UCAL_MONTH) + 1, field(*calendar, UCAL_DATE)};
}

Date Calendar::startOfDay(Date date) const {
    clearTimeOfDay(impl_->at(date));
    return impl_->read();
}

DateInterval Calendar::day(Date date) const {
    const Date start = startOfDay(date);
    // Noon exists on every day, so the next day is found from there and not from a midnight that may be missing.
    auto& calendar = impl_->at(start);
    calendar.set(UCAL_HOUR_OF_DAY, 12);
    return {start, startOfDay(addingDays(1, impl_->read()))};
}

DateInterval Calendar::week(Date date) const {
    const int back = (components(date).weekday - firstWeekday() + 7) % 7;
    // By the numbers of the days: where a day was left out of the calendar, the week is shorter.
    const auto startOf = [&](int daysLater) {
        auto& calendar = impl_->at(date);
        calendar.set(UCAL_DATE, field(calendar, UCAL_DATE) + daysLater);
        calendar.set(UCAL_HOUR_OF_DAY, 12);
        return startOfDay(impl_->read());
    };
    return {startOf(-back), startOf(7 - back)};
}

DateInterval Calendar::month(Date date) const {
    auto& calendar = impl_->at(date);
    calendar.set(UCAL_DATE, 1);
    calendar.set(UCAL_HOUR_OF_DAY, 12);
    const Date noon = impl_->read();
    return {startOfDay(noon), startOfDay(addingMonths(1, noon))};
}

bool Calendar::isSameDay(Date a, Date b) const {
    return startOfDay(a) == startOfDay(b);
}

Date Calendar::addingDays(int days, Date date) const {
    return impl_->adding(UCAL_DATE, days, date);
}

Date Calendar::addingMonths(int months, Date date) const {
    return impl_->adding(UCAL_MONTH, months, date);
}

std::string Calendar::localeName() const {
    UErrorCode error = U_ZERO_ERROR;
    return impl_->calendar->getLocale(ULOC_VALID_LOCALE, error).getName();
}

const std::shared_ptr<const TimeZone>& Calendar::timeZone() const {
    return impl_->zone;
}

}  // namespace quorvane
