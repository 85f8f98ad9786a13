#pragma once

#include "base/Date.h"
#include "base/Iso8601.h"
#include "base/TimeZone.h"

#include <memory>
#include <string>

namespace quorvane {

/// The fields of an instant in one calendar and zone.
struct DateComponents {
    int year = 1970;
    int month = 1;    ///< from 1
    int day = 1;      ///< from 1
    int hour = 0;     ///< 0 to 23
    int minute = 0;   ///< 0 to 59
    int second = 0;   ///< 0 to 59
    int weekday = 1;  ///< 1 is Sunday, 7 is Saturday
    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

/// A calendar of one locale and one time zone. It knows that a day may have 23 or 25 hours, and that some days have no
/// midnight: their first instant is what follows the gap. Cheap to copy, for one thread at a time.
class Calendar {
public:
    /// `locale` as POSIX or BCP 47 write it ("de_DE.UTF-8", "th-TH"); `zone` as TZ does, mostly by an IANA name
    /// ("America/New_York"). What is unknown falls back to the root locale and to UTC.
    Calendar(const std::string& locale, const std::string& zone);
    Calendar(const std::string& locale, std::shared_ptr<const TimeZone> zone);
    Calendar(const Calendar& other);
    Calendar& operator=(const Calendar& other);
    Calendar(Calendar&&) noexcept;
    Calendar& operator=(Calendar&&) noexcept;
    ~Calendar();

    /// The user's: locale from the first set of LC_ALL, LC_TIME, LANG; `localTimeZone()`. Whoever keeps one for longer
    /// than a task compares the zones, as the user's may change.
    [[nodiscard]] static Calendar current();

    /// A Gregorian calendar whose weeks begin on Monday, in the zone of `other`.
    [[nodiscard]] static Calendar mondayFirst(const Calendar& other);

    [[nodiscard]] int firstWeekday() const;  ///< 1 is Sunday

    [[nodiscard]] DateComponents components(Date date) const;

    /// The instant with these fields in the Gregorian calendar of this zone; a time in a gap is moved past it, one that
    /// happens twice is the first. `second` may have a fraction.
    [[nodiscard]] Date date(CivilDate day, int hour = 0, int minute = 0, double second = 0) const;

    /// The day, as the Gregorian calendar names it, in this zone.
    [[nodiscard]] CivilDate civilDate(Date date) const;

    [[nodiscard]] Date startOfDay(Date date) const;

    /// From its first instant to the first instant of the next one.
    [[nodiscard]] DateInterval day(Date date) const;
    [[nodiscard]] DateInterval week(Date date) const;
    [[nodiscard]] DateInterval month(Date date) const;

    [[nodiscard]] bool isSameDay(Date a, Date b) const;

    /// The same time of day so many calendar units later (or earlier, when negative).
    [[nodiscard]] Date addingDays(int days, Date date) const;
    [[nodiscard]] Date addingMonths(int months, Date date) const;

    [[nodiscard]] std::string localeName() const;  ///< as ICU writes it, "de_DE"
    [[nodiscard]] const std::shared_ptr<const TimeZone>& timeZone() const;

private:
    struct Impl;
    explicit Calendar(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

/// The user's locale for dates: the first set of LC_ALL, LC_TIME, LANG. "en_US_POSIX" stands for the C locale, and for
/// none.
[[nodiscard]] std::string dateLocale();

}  // namespace quorvane
