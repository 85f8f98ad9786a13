#include "store/Absence.h"
#include "tracking/ActivityTracker.h"
#include "tracking/PresenceNote.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr Seconds leastAbsence = 60s;  ///< that is worth a row

/// An absence that goes on after all becomes longer and no second one.
void keepInStore(ModelContext& context, DateInterval time) {
    const auto known = context.fetch<Absence>({.predicate = field(&Absence::startTime) == time.start, .limit = 1});
    const auto absence = known.empty() ? std::make_shared<Absence>() : known.front();
    absence->startTime = time.start;
    absence->endTime = time.end;
    if (known.empty()) context.insert(absence);
    context.save();
}

}  // namespace

// --- The pause that the user asks for -----------------------------------------------------------------------------

void ActivityTracker::toggle() {
    const bool pauses = isTracking_;
    keepPause(pauses ? std::optional(runLoop_.now()) : std::nullopt);
    if (pauses)
        stop();
    else
        start();
}

void ActivityTracker::startUnlessPaused() {
    if (pausedSince_)
        console_.line("ActivityTracker: Paused by the user since {}", describe(*pausedSince_));
    else
        start();
}

void ActivityTracker::keepPause(std::optional<Date> since) {
    pausedSince_ = since;
    auto* context = modelContext_.get();
    if (context == nullptr) return;
    try {
        PresenceNote::keepPause(*context, since);
    } catch (const StoreError& error) {
        console_.line("ActivityTracker: Failed to keep the pause: {}", error.what());
    }
}

void ActivityTracker::adoptPause(ModelContext& context) {
    if (isTracking_) return keepPause(std::nullopt);
    try {
        pausedSince_ = PresenceNote::pausedSince(context);
    } catch (const StoreError& error) {
        console_.line("ActivityTracker: Failed to read the pause: {}", error.what());
    }
    presenceChanged.send();
}

// --- Absences -----------------------------------------------------------------------------------------------------

void ActivityTracker::noteAbsence(Date since, const ClockLook& look) {
    if (!absence_.begin(std::max(since, watchedSince_), look)) return;
    keepAwaySince(absence_.since());
    presenceChanged.send();
}

/// What was an absence is over, and stored if it is worth it.
std::optional<DateInterval> ActivityTracker::endAbsence(const ClockLook& look) {
    if (!absence_.since()) return std::nullopt;
    const auto absence = absence_.end(look);
    keepAwaySince(std::nullopt);
    auto* context = modelContext_.get();
    if (context != nullptr && absence && absence->end - absence->start >= leastAbsence) {
        try {
            keepInStore(*context, *absence);
        } catch (const StoreError& error) {
            console_.line("ActivityTracker: Failed to save an absence: {}", error.what());
        }
    }
    return absence;
}

void ActivityTracker::noteReturn(const ClockLook& look) {
    returnWatch_.reset();
    if (!absence_.since()) return;
    const auto absence = endAbsence(look);
    const Seconds length = absence ? absence->end - absence->start : 0s;
    const Seconds threshold{static_cast<double>(trackingSettings().threshold)};
    lastAbsence_ = length >= std::max(threshold, leastAbsence) ? absence : std::nullopt;
    presenceChanged.send();
}

void ActivityTracker::forgetLastAbsence() {
    if (!lastAbsence_) return;
    lastAbsence_.reset();
    presenceChanged.send();
}

/// Nobody's time ends here: an absence reaches neither into it nor over it.
void ActivityTracker::noteUnwatched(const ClockLook& look) {
    const bool wasAway = absence_.since().has_value();
    endAbsence(look);
    watchedSince_ = look.now;
    if (wasAway) presenceChanged.send();
}

void ActivityTracker::awaitReturn() {
    // One that has gone off stays until somebody has been seen: the timer goes on looking meanwhile.
    if (returnWatch_) return;
    returnWatch_ = desktop_.returns().watch([weak = weak_.handle()] {
        if (auto* self = weak.get()) self->tick();
    });
}

void ActivityTracker::keepAwaySince(std::optional<Date> since) {
    auto* context = modelContext_.get();
    if (context == nullptr) return;
    try {
        PresenceNote::keepAbsence(*context, since);
    } catch (const StoreError& error) {
        console_.line("ActivityTracker: Failed to note an absence: {}", error.what());
    }
}

}  // namespace quorvane
