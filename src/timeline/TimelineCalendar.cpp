#include "timeline/TimelineCalendar.h"

#include "base/LocalTimeZone.h"

namespace quorvane {

const Calendar& timelineCalendar() {
    static Calendar calendar = Calendar::mondayFirst(Calendar::current());
    if (localTimeZone() != calendar.timeZone()) calendar = Calendar::mondayFirst(Calendar::current());
    return calendar;
}

DateInterval timelineDay(Date date, const Calendar& calendar) {
    const auto day = calendar.day(date);
    return {day.start, day.end - 1s};
}

}  // namespace quorvane
