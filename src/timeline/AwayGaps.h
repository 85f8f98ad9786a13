#pragma once

#include "base/Calendar.h"
#include "base/Uuid.h"
#include "store/Absence.h"
#include "store/ModelContext.h"
#include "store/Predicate.h"
#include "timeline/ClockHours.h"

#include <memory>
#include <vector>

namespace quorvane {

/// A stretch of a day in which nobody was there, and which neither a record nor a project has.
struct AwayGap {
    Uuid id;  ///< made of its times
    DateInterval time;
    TimeRange hours;
    bool isLeftEmpty = false;  ///< the user wants nothing of it
    friend bool operator==(const AwayGap&, const AwayGap&) = default;
};

/// What `taken` leaves of the absences on a day, as long as it lasts a minute at least; by start.
[[nodiscard]] std::vector<AwayGap> awayGaps(const std::vector<std::shared_ptr<Absence>>& absences,
                                            std::vector<DateInterval> taken, DateInterval day,
                                            const Calendar& calendar);

/// The absences that begin within the range or in the three days before it, by start; some may end before the range.
/// Longer ones are no gaps of a day's work.
[[nodiscard]] FetchDescriptor<Absence> absencesAround(DateInterval range);

/// Notes of the absences that share time with the range that the user leaves them empty. Throws `StoreError`.
void leaveEmpty(ModelContext& context, DateInterval range);

}  // namespace quorvane
