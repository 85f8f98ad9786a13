#include "cli/OverviewInput.h"

#include "platform/Clock.h"
#include "timeline/TimelineCalendar.h"

#include <algorithm>

namespace quorvane::cli {

OverviewInput readOverview(ModelContext& store, DateInterval range) {
    OverviewInput input{.records = recordsTouching(store, range), .annotations = annotationsTouching(store, range)};
    std::sort(input.records.begin(), input.records.end(),
              [](const TimelineRecordSnapshot& a, const TimelineRecordSnapshot& b) {
                  return a.startTime != b.startTime ? a.startTime > b.startTime : a.id < b.id;
              });
    return input;
}

Date chosenDate(const std::optional<CivilDate>& day) {
    return day ? timelineCalendar().date(*day) : platform::currentDate();
}

}  // namespace quorvane::cli
