#pragma once

#include "store/RecordSpans.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// The decisions of the clean-up: which records are debris, and what becomes of neighbours.
namespace quorvane::RecordHygiene {

/// Longer than a day, or open for longer than one. A negative duration isn't abnormal here.
[[nodiscard]] bool isAbnormal(const RecordSpan& span, Date now);

/// When an open record that was left behind ends; none while it may still be going on.
[[nodiscard]] std::optional<Date> endOfForgotten(Date start, Date now);

/// What becomes of two records that follow each other by their start. An open first one overlaps nothing.
enum class OverlapDecision { none, endFirst, removeFirst, removeSecond };
[[nodiscard]] OverlapDecision decideOverlap(const RecordSpan& first, const RecordSpan& second, Date now);

/// Finds neighbours of one application that are in truth one stretch of work, from ended records in the order of their
/// start. A record takes part in one merge at most: of three in a row the first two merge.
class AdjacentMerges {
public:
    /// `second` goes, and `first` ends when it did.
    struct Merge {
        RecordSpan first;
        RecordSpan second;
        [[nodiscard]] Seconds gap() const { return second.start - *first.end; }
    };

    void add(const RecordSpan& span);

    /// The merges application by application, in the order of their first records.
    [[nodiscard]] std::vector<Merge> found() const;

private:
    struct Application {
        RecordSpan last;
        bool isLastListed = false;  ///< for deletion
        std::vector<Merge> merges;
    };
    std::unordered_map<std::string, std::size_t> places_;  ///< of each bundle id among the applications
    std::vector<Application> applications_;
};

/// All records that start within the same 120 s, counted from 1970.
struct TimeWindow {
    static constexpr Seconds length = 120s;

    Date start;
    std::vector<RecordSpan> records;

    /// The first of the longest ones.
    [[nodiscard]] const RecordSpan& longest() const;
    /// Those below 20 s; none in a window with a single record.
    [[nodiscard]] std::vector<RecordSpan> shortOnes() const;
};

/// The windows of ended records that come in the order of their start.
[[nodiscard]] std::vector<TimeWindow> timeWindows(const std::vector<RecordSpan>& spans);

}  // namespace quorvane::RecordHygiene
