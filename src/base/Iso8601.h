#pragma once

#include "base/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// "2026-03-04T15:00:00Z": UTC, fractions of a second cut off. Dates outside the years 1 to 9999 are clamped to them.
[[nodiscard]] std::string iso8601Seconds(Date date);

/// "2026-03-04T15:00:00.000000Z": UTC, rounded to the microsecond. Clamped likewise.
[[nodiscard]] std::string iso8601Microseconds(Date date);

/// The same two, appended to a buffer by loops over many rows.
void appendIso8601Seconds(std::string& out, Date date);
void appendIso8601Microseconds(std::string& out, Date date);

/// The same from whole microseconds since 1970, as the store holds them: exact also where a `Date` no longer is, two
/// centuries and more away.
void appendIso8601Seconds(std::string& out, std::int64_t microseconds);
void appendIso8601Microseconds(std::string& out, std::int64_t microseconds);

/// Reads "YYYY-MM-DDTHH:MM:SS[.fraction](Z|±HH:MM|±HHMM|±HH)" in the years 1 to 9999; `t` and `z` may be small, a blank
/// may stand for `T`. A leap second reads as the first instant of the next minute. Nothing else is accepted: no
/// instant, and none without an offset.
[[nodiscard]] std::optional<Date> parseIso8601(std::string_view text);

/// The same in whole microseconds since 1970.
[[nodiscard]] std::optional<std::int64_t> parseIso8601Microseconds(std::string_view text);

/// A calendar day as it is written: "2026-03-04".
struct CivilDate {
    int year = 1970;
    int month = 1;
    int day = 1;
    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

/// Reads "YYYY-MM-DD"; no such day in the Gregorian calendar, no answer.
[[nodiscard]] std::optional<CivilDate> parseCivilDate(std::string_view text);

[[nodiscard]] std::string civilDateText(CivilDate date);

}  // namespace quorvane
