#include "shell/state/AbsenceOffer.h"

#include "base/Calendar.h"
#include "store/AppSettings.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/StoreError.h"
#include "timeline/AnnotationAssignment.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr Seconds patience = 600s;

}  // namespace

AbsenceOffer::AbsenceOffer(DayTimelineChart& chart, ActivityTracker& tracker, ModelContext& context,
                           platform::RunLoop& runLoop)
    : chart_(chart), tracker_(tracker), context_(context), runLoop_(runLoop),
      chartChanged_(chart.changed.subscribe([this] { changed.send(); })),
      presenceChanged_(tracker.presenceChanged.subscribe([this] { takeReturn(); })),
      assignmentsChanged_(context.didChange.subscribe([this](const EntityChange& change) {
          if (!returned_ || &change.entity->entityDescription() != &ProjectTimeAnnotation::description()) return;
          runLoop_.post([weak = weak_.handle()] {
              if (auto* self = weak.get()) self->takeReturn();
          });
      })) {
    takeReturn();
}

std::optional<AbsenceOffer::Content> AbsenceOffer::content() const {
    if (chart_.projectSelector() != nullptr) return std::nullopt;
    if (const auto& gap = chart_.selectedGap(); gap && chart_.currentViewMode() == TimelineViewMode::day)
        return Content{.time = gap->time, .isLeftEmpty = gap->isLeftEmpty};
    return returned_ ? std::optional(Content{.time = *returned_, .isReturn = true}) : std::nullopt;
}

/// A night is no gap of a day's work.
void AbsenceOffer::takeReturn() {
    const auto& last = tracker_.lastAbsence();
    const Seconds age = last ? runLoop_.now() - last->end : 0s;
    const bool isOffered =
        last && age >= 0s && age < patience && Calendar::current().isSameDay(last->start, last->end) && isWanted();
    returned_ = isOffered ? freePart(*last) : std::nullopt;
    expiry_ = returned_ ? runLoop_.after(patience - age, [this] { tracker_.forgetLastAbsence(); }) : nullptr;
    changed.send();
}

/// The longest that no project has yet: no minute is given away twice.
std::optional<DateInterval> AbsenceOffer::freePart(DateInterval absence) const {
    const auto whole = std::make_shared<Absence>();
    whole->startTime = absence.start;
    whole->endTime = absence.end;
    std::vector<DateInterval> taken;
    try {
        for (const auto& given : annotationsOverlapping(context_, absence))
            taken.push_back({given->startTime(), given->endTime()});
    } catch (const StoreError&) {
        return std::nullopt;
    }
    const auto calendar = Calendar::current();
    const auto gaps = awayGaps({whole}, std::move(taken), calendar.day(absence.start), calendar);
    const auto longest =
        std::ranges::max_element(gaps, {}, [](const AwayGap& gap) { return gap.time.end - gap.time.start; });
    return longest == gaps.end() ? std::nullopt : std::optional(longest->time);
}

bool AbsenceOffer::isWanted() const {
    try {
        const auto settings = context_.fetch<AppSettings>({.limit = 1});
        return settings.empty() || settings.front()->offersAbsences();
    } catch (const StoreError&) {
        return false;
    }
}

void AbsenceOffer::assign() {
    const auto offered = content();
    if (!offered) return;
    if (offered->isReturn) {
        chart_.openDay(offered->time.start);
        tracker_.forgetLastAbsence();
    }
    chart_.assignGap(offered->time);
}

void AbsenceOffer::leaveEmpty() {
    const auto offered = content();
    if (!offered || !chart_.leaveGapEmpty(offered->time)) return;
    dismiss();
}

void AbsenceOffer::dismiss() {
    const auto offered = content();
    if (offered && offered->isReturn)
        tracker_.forgetLastAbsence();
    else
        chart_.select(nullptr);
}

}  // namespace quorvane
