#pragma once

#include "store/RecordSpans.h"

#include <vector>

/// The decisions of the clean-up: which records are debris, and what becomes of neighbours.
namespace quorvane::RecordHygiene {

/// May a pass change or remove the record? Not the live one, not what is settled, and not what was brought back from
/// the trash. Throws `StoreError`.
[[nodiscard]] bool mayTouch(ModelContext& context, const ActivityRecord& record, const std::optional<Uuid>& live);

/// Has somebody decided about its billing status, or is it in the cloud? From there another device may have it or may
/// have sent it; nothing in a record tells which of the two.
[[nodiscard]] bool isSettled(const ActivityRecord& record);

/// Longer than a day, or open for longer than one. A negative duration isn't abnormal here.
[[nodiscard]] bool isAbnormal(const RecordSpan& span, Date now);

/// When a record ends that was left open: at its last sign of life, not in the future, and after a second at least.
[[nodiscard]] Date endOfLeftOpen(Date start, Date lastSign, Date now);

/// What becomes of two records that follow each other by their start. An open first one overlaps nothing.
enum class OverlapDecision { none, endFirst, removeFirst, removeSecond };
[[nodiscard]] OverlapDecision decideOverlap(const RecordSpan& first, const RecordSpan& second, Date now);

/// Are two records, read with their content, between which none begins, in truth one stretch of work? Then the second
/// goes, and the first ends when it did.
[[nodiscard]] bool areMergeable(const RecordSpan& first, const RecordSpan& second);

/// Does a record follow an ended one of the same application at once? Of such two one can take in the other if that is
/// short.
[[nodiscard]] bool abut(const RecordSpan& first, const RecordSpan& second);

/// An ended record below 20 s.
[[nodiscard]] bool isShort(const RecordSpan& ended);

/// All records that start within the same 120 s, counted from 1970.
struct TimeWindow {
    static constexpr Seconds length = 120s;

    Date start;
    std::vector<RecordSpan> records;

    /// The first of the longest ones.
    [[nodiscard]] const RecordSpan& longest() const;
    /// The short ones; none in a window with a single record.
    [[nodiscard]] std::vector<RecordSpan> shortOnes() const;
};

/// The windows of ended records that come in the order of their start.
[[nodiscard]] std::vector<TimeWindow> timeWindows(const std::vector<RecordSpan>& spans);

}  // namespace quorvane::RecordHygiene
