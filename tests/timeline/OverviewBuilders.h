#pragma once

#include "base/Calendar.h"
#include "support/Builders.h"
#include "timeline/TimelineAnnotation.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <fmt/format.h>

namespace quorvane {

/// A time of a day in March 2026 in UTC; the 2nd is a Monday.
inline Date march(int day, const char* time) {
    return at(fmt::format("2026-03-{:02}T{}Z", day, time));
}

/// The timeline's calendar in a zone.
inline Calendar mondayFirst(const char* zone = "UTC") {
    return Calendar::mondayFirst(Calendar("en_US", zone));
}

inline TimelineRecordSnapshot activity(const char* name, Date start, std::optional<Date> end) {
    return {.id = Uuid::random(), .startTime = start, .endTime = end, .appName = name};
}

inline TimelineAnnotation given(const char* project, Date start, Date end) {
    return {.id = Uuid::random(), .startTime = start, .endTime = end, .projectName = project, .projectColor = "mint"};
}

}  // namespace quorvane
