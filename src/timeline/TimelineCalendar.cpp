#include "timeline/TimelineCalendar.h"

namespace quorvane {

const Calendar& timelineCalendar() {
    static const Calendar calendar = Calendar::mondayFirst(Calendar::current());
    return calendar;
}

DateInterval timelineDay(Date date, const Calendar& calendar) {
    const auto day = calendar.day(date);
    return {day.start, day.end - 1s};
}

}  // namespace quorvane
