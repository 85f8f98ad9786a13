#pragma once

#include "base/Calendar.h"
#include "base/Date.h"
#include "timeline/HourLayout.h"
#include "timeline/ProcessedActivityItem.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <set>
#include <stop_token>
#include <vector>

/// From the records of a day to the blocks that are drawn. Values in, values out; any thread, with a calendar of its
/// own.
namespace quorvane::TimelineProcessing {

/// The records on the chart of the day of `selectedDate`, by start: those that begin on it and last at all, until
/// their end or now. The login window is none of them.
[[nodiscard]] std::vector<TimelineRecordSnapshot> snapshotsOfDay(std::vector<TimelineRecordSnapshot> records,
                                                                 Date selectedDate, Date now, const Calendar& calendar);

/// Joins neighbours of one application that lie at most two minutes apart: from the first start to the last end. What
/// is under a minute even so is left out, and no neighbour of anything. By start, among equals by id.
[[nodiscard]] std::vector<TimelineRecordSnapshot> mergeAdjacentRecords(std::vector<TimelineRecordSnapshot> snapshots,
                                                                       Date now);

/// Gives each snapshot its place, in the order given: its true times, open ones until now, and a lane.
[[nodiscard]] std::vector<TimelineProcessedSnapshot> placeSnapshots(std::vector<TimelineRecordSnapshot> snapshots,
                                                                    Date now, const Calendar& calendar);

/// Longest first, so that shorter ones are drawn above them; of two that differ by less than 0.0001 h the one that
/// begins first. Where that rule leads in a circle, it still holds between neighbours.
void sortByDrawOrder(std::vector<TimelineProcessedSnapshot>& blocks);

/// Merges, places and sorts: what runs in the background. None once `stop` was requested.
[[nodiscard]] std::vector<TimelineProcessedSnapshot> process(std::vector<TimelineRecordSnapshot> snapshots, Date now,
                                                             const Calendar& calendar,
                                                             const std::stop_token& stop = {});

/// The blocks with their colours, in the same order; positions and labels follow with the layout.
[[nodiscard]] std::vector<ProcessedActivityItem> makeItems(std::vector<TimelineProcessedSnapshot> blocks);

/// The hours (0 to 23) in which something happened.
[[nodiscard]] std::set<int> activityHours(const std::vector<ProcessedActivityItem>& items);

/// Puts the items where the layout says, and lets those show their names that don't stand too close to their like.
void layOut(std::vector<ProcessedActivityItem>& items, const HourLayout& layout);

}  // namespace quorvane::TimelineProcessing
