#pragma once

#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/LiveRecord.h"
#include "store/OverlapGroups.h"

#include <cstddef>

namespace quorvane {

/// Finds and mends groups of records that overlap, and answers whether a record that is about to start would. What was
/// left open gets its end first. Records that no pass may touch stay as they are (`RecordHygiene::mayTouch`), and what
/// goes is in the trash. Main thread only; nothing throws: what goes wrong is printed. Run loop and console outlive it
/// and every check it began, and whoever knows the live record outlives the checks, too.
class OverlapDetectionService {
public:
    /// `sliceSize` (> 0): how many records a check over all of them reads in one turn of the loop.
    OverlapDetectionService(ModelContext& modelContext, platform::RunLoop& runLoop, ConsoleSink& console,
                            std::size_t sliceSize = RecordSpans::sliceSize, LiveRecord liveRecord = {});

    /// Checks all records until nothing more has to go. A store of one slice is done when this returns. In a larger one
    /// the check goes on in later turns of the loop, also without this object, and ends quietly with the context; a
    /// record that is inserted meanwhile is left to the next check, one that changes or goes is seen as it is at the
    /// end.
    void detectAndResolveOverlaps();

    /// Checks the records that touch the day of `on` in the user's calendar.
    void detectAndResolveOverlaps(Date on);

    /// Does a record other than `excluding` reach into the range, ends not included? An open one lasts until now. False
    /// if the store can't be read.
    [[nodiscard]] bool hasOverlap(Date start, Date end, const ActivityRecord* excluding = nullptr);

    /// The start of the next record behind `after`, at the latest now; now if there is none or the store can't be read.
    [[nodiscard]] Date suggestedEndTime(Date after);

private:
    ModelContext& modelContext_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    std::size_t sliceSize_;
    LiveRecord liveRecord_;
};

}  // namespace quorvane
