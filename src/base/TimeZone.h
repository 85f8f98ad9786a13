#pragma once

#include "base/Date.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvane {

/// How far the clocks of a place are from UTC, at every instant. Immutable, and for any thread.
class TimeZone {
public:
    /// From `at` on (seconds since 1970) the clocks are `offset` seconds before UTC; east is positive.
    struct Change {
        std::int64_t at = 0;
        std::int32_t offset = 0;
        friend bool operator==(const Change&, const Change&) = default;
    };

    /// No offset is larger: clocks are never more than 26 hours from UTC.
    static constexpr std::int32_t mostOffset = 93'600;

    /// `offset` holds until the first of `changes`, which stand by time. `repeats` says that their last 400 years,
    /// after which the days of the Gregorian calendar fall alike, go on for ever.
    explicit TimeZone(std::int32_t offset = 0, const std::vector<Change>& changes = {}, bool repeats = false);

    /// What the clocks show at an instant, as the instant at which clocks in UTC show the same.
    [[nodiscard]] Date wallTime(Date instant) const;

    /// The instant at which the clocks show that, the first of two. What they skip is the end of the gap.
    [[nodiscard]] Date instant(Date wallTime) const;

private:
    [[nodiscard]] std::size_t periodAt(std::int64_t second) const;
    [[nodiscard]] std::int64_t cyclesUntil(std::int64_t second) const;

    std::vector<Change> periods_;  ///< never empty; the first one has always been
    bool repeats_;
};

}  // namespace quorvane
