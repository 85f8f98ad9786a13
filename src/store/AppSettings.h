#pragma once

#include "base/Calendar.h"
#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"

#include <string>
#include <vector>

namespace quorvane {

/// The user's settings. Readers take the first row. The first start makes one (`InitialSettings`); where there is none
/// all the same, the defaults below hold.
class AppSettings final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<bool> onlyTrackWorkHours{*this, false};
    Attribute<std::string> workDays{*this, "1,2,3,4,5"};  ///< 0 is the first day of the user's week
    Attribute<std::int64_t> workStartHour{*this, 9};
    Attribute<std::int64_t> workStartMinute{*this, 0};
    Attribute<std::int64_t> workEndHour{*this, 18};
    Attribute<std::int64_t> workEndMinute{*this, 0};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};
    Attribute<std::string> preferredLanguage{*this, "zh"};
    Attribute<bool> enableIdleDetection{*this, true};
    Attribute<std::int64_t> idleThresholdMinutes{*this, 5};
    Attribute<bool> hideDockIcon{*this, false};
    Attribute<bool> splitsRecordsByTitle{*this, true};  ///< does another title, document or page begin a record?
    /// Is somebody there while an application holds idleness off, or the one in front plays?
    Attribute<bool> countsCallsAsPresence{*this, false};
    Attribute<bool> offersAbsences{*this, true};  ///< does the window ask what an absence was?

    /// The numbers of `workDays` in their order; what is no number is left out.
    [[nodiscard]] std::vector<std::int64_t> workDayList() const;
    /// Stores the numbers joined by ",". `updatedAt` stays.
    void setWorkDayList(const std::vector<std::int64_t>& days);

    /// How `workDays` names a weekday of the calendar, where 1 is Sunday.
    [[nodiscard]] static std::int64_t dayNumber(int weekday, const Calendar& calendar);

    /// Does tracking run at that moment? The days are counted from the calendar's own first weekday: the same list
    /// means other days where weeks begin on Monday. Both ends of the hours belong to them, to the minute; hours that
    /// end before they start hold at no time.
    [[nodiscard]] bool isWithinWorkHours(Date date, const Calendar& calendar = Calendar::current()) const;
};

}  // namespace quorvane
