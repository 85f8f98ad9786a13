#include "timeline/ClockHours.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

/// What the clock shows at midnight of the day whose time it shows.
Date midnightOf(Date wallTime) {
    return Date(std::floor(wallTime.time_since_epoch() / 24h) * 24h);
}

}  // namespace

TimeRange clockHours(DateInterval stretch, const Calendar& calendar) {
    const TimeZone& zone = *calendar.timeZone();
    const Date start = zone.wallTime(stretch.start);
    const Date end = zone.wallTime(stretch.end);
    const Seconds length = end > start ? end - start : std::max<Seconds>(stretch.end - stretch.start, 0s);
    const Date midnight = midnightOf(start);
    return {(start - midnight) / 1h, (start + length - midnight) / 1h};
}

DateInterval instantsAt(const TimeRange& hours, Date date, const Calendar& calendar) {
    const TimeZone& zone = *calendar.timeZone();
    const Date midnight = midnightOf(zone.wallTime(date));
    return {zone.instant(midnight + hours.startHour * 1h), zone.instant(midnight + hours.endHour * 1h)};
}

}  // namespace quorvane
