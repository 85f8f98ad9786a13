#pragma once

#include "base/Date.h"
#include "tracking/ActivityTrackingPolicy.h"

#include <optional>

namespace quorvane {

/// Since when nobody has been there, and how long that was once somebody comes.
class AbsenceWatch {
public:
    /// Nobody has been there since then. An absence under way goes on, and so does the last one if nobody touched
    /// anything since, as where a window came to the front by itself. True if one begins.
    bool begin(Date since, const ClockLook& look);

    /// Somebody is there: the absence that is over. None if there was none, or if the clock was set meanwhile: nobody
    /// can tell then which minutes it were.
    std::optional<DateInterval> end(const ClockLook& look);

    /// None while somebody is there.
    [[nodiscard]] std::optional<Date> since() const { return open_ ? std::optional(open_->since) : std::nullopt; }

private:
    struct Begun {
        Date since;
        ClockLook seenAt;
    };
    std::optional<Begun> open_;
    std::optional<Begun> last_;
    Date lastEnd_;
};

}  // namespace quorvane
