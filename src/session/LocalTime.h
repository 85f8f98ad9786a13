#pragma once

#include "base/Calendar.h"

#include <string>

namespace quorvane {

/// Instants in the user's calendar and zone, for people who read a terminal.
class LocalTime {
public:
    [[nodiscard]] std::string dateAndTime(Date date) const;  ///< "2026-03-04 15:00:00"
    [[nodiscard]] std::string time(Date date) const;         ///< "15:00:00"

    [[nodiscard]] const Calendar& calendar() const { return calendar_; }

private:
    Calendar calendar_ = Calendar::current();
};

/// "1:02:03", with hours as many as there are; what is below a second is cut off, what is below zero counts as zero.
[[nodiscard]] std::string durationText(Seconds duration);

}  // namespace quorvane
