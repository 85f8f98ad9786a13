#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "platform/RunLoop.h"
#include "timeline/DayTimelineChart.h"
#include "tracking/ActivityTracker.h"

#include <memory>
#include <optional>

namespace quorvane {

/// What the window says of an absence: of the gap that is chosen on the day, else once of the one from which the user
/// has just come back, if the settings want that. No answer within ten minutes leaves the gap as it is. What it is made
/// on outlives it. Main thread only.
class AbsenceOffer {
public:
    AbsenceOffer(DayTimelineChart& chart, ActivityTracker& tracker, ModelContext& context, platform::RunLoop& runLoop);
    AbsenceOffer(const AbsenceOffer&) = delete;
    AbsenceOffer& operator=(const AbsenceOffer&) = delete;

    struct Content {
        DateInterval time;
        bool isLeftEmpty = false;  ///< already
        bool isReturn = false;     ///< and no gap that somebody chose
        friend bool operator==(const Content&, const Content&) = default;
    };
    /// None while there is nothing to say.
    [[nodiscard]] std::optional<Content> content() const;

    /// Opens the panel that gives the gap to a project, on its day.
    void assign();
    void leaveEmpty();
    /// Says no more of it; nothing changes.
    void dismiss();

    /// Sent after the content may have changed.
    Signal<> changed;

private:
    void takeReturn();
    [[nodiscard]] bool isWanted() const;
    [[nodiscard]] std::optional<DateInterval> freePart(DateInterval absence) const;

    DayTimelineChart& chart_;
    ActivityTracker& tracker_;
    ModelContext& context_;
    platform::RunLoop& runLoop_;
    std::optional<DateInterval> returned_;
    std::unique_ptr<platform::WorkItem> expiry_;
    Subscription chartChanged_;
    Subscription presenceChanged_;
    Subscription assignmentsChanged_;
    WeakSource<AbsenceOffer> weak_{*this};  // last: dies first, so that no callback meets half an offer
};

}  // namespace quorvane
