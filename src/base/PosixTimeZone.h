#pragma once

#include "base/TimeZone.h"

#include <optional>
#include <string_view>

namespace quorvane {

/// The rules of a zone as POSIX writes them: "CET-1CEST,M3.5.0,M10.5.0/3".
struct PosixTimeZone {
    /// A moment of each year, by the clocks that are in force just before it.
    struct Moment {
        /// The nth day of a year that never has a 29 February; the nth after 1 January; a weekday of a month.
        enum class Form { withoutLeapDay, afterFirst, weekday };
        Form form = Form::weekday;
        int day = 0;               ///< of the year, or of the week, where 0 is Sunday
        int month = 1;             ///< of a weekday
        int week = 1;              ///< of a weekday: the nth of the month, 5 for the last
        std::int32_t time = 7200;  ///< seconds after midnight, which may lie on another day
    };
    struct Summer {
        std::int32_t offset = 0;
        Moment begin;
        Moment end;
    };

    std::int32_t offset = 0;  ///< seconds east of UTC, in winter
    std::optional<Summer> summer;

    /// Without rules summer time is that of the United States. What is no such text gives none.
    [[nodiscard]] static std::optional<PosixTimeZone> parse(std::string_view text);

    /// The changes of so many years, by time; none without summer time.
    [[nodiscard]] std::vector<TimeZone::Change> changes(int firstYear, int years) const;
};

}  // namespace quorvane
