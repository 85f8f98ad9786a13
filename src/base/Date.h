#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace quorvane {

using namespace std::chrono_literals;

/// A duration. Literals read as they are said: `300s`, `0.25s`, `1h`.
using Seconds = std::chrono::duration<double>;

/// An instant, counted in seconds since 1970-01-01T00:00:00Z.
using Date = std::chrono::time_point<std::chrono::system_clock, Seconds>;

/// A span of time, `start <= end`; whether the end belongs to it is the user's business.
struct DateInterval {
    Date start;
    Date end;
    friend bool operator==(const DateInterval&, const DateInterval&) = default;
};

/// The first instant of year 1: earlier than anything that happens here.
inline constexpr Date distantPast{Seconds{-62135596800.0}};

/// Seconds since 1970, with fraction.
[[nodiscard]] constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

[[nodiscard]] constexpr Date dateFromSecondsSince1970(double seconds) {
    return Date{Seconds{seconds}};
}

/// Whole microseconds since 1970, rounded to nearest: the precision of the store and of JSON. Out of range: clamped.
[[nodiscard]] std::int64_t microsecondsSince1970(Date date);

[[nodiscard]] constexpr Date dateFromMicroseconds(std::int64_t microseconds) {
    return Date{Seconds{static_cast<double>(microseconds) / 1e6}};
}

/// The form of a date in lines that the services print: "2026-03-04 15:00:00 +0000".
[[nodiscard]] std::string describe(Date date);

}  // namespace quorvane
