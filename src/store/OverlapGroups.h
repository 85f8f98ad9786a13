#pragma once

#include "store/RecordSpans.h"

#include <vector>

namespace quorvane {

/// A run of at least two records in the order of their start, each of which starts before the previous one ended.
struct OverlapGroup {
    std::vector<std::shared_ptr<ActivityRecord>> records;
};

}  // namespace quorvane

/// The decisions about mutually overlapping records. Their limits differ from those of the clean-up's pass over pairs,
/// and on purpose: neither is made from the other.
namespace quorvane::OverlapGroups {

/// Places of a list, `first` included, `end` not.
struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
    friend bool operator==(const Range&, const Range&) = default;
};

/// The groups among spans in the order of their start. Only the end of the previous record counts and not the latest
/// end so far: a short record behind a long one can end a group early.
[[nodiscard]] std::vector<Range> find(const std::vector<RecordSpan>& spans, Date now);

/// How many spans from the beginning of a list that goes on elsewhere form groups to which nothing can be added, and
/// start before all that follow; 0 if there is no such place.
[[nodiscard]] std::size_t completeSpans(const std::vector<RecordSpan>& spans, Date now);

/// The groups that the records of a former group still form.
[[nodiscard]] std::vector<OverlapGroup> regrouped(const OverlapGroup& group, Date now);

/// A duration under 30 s, which a group doesn't keep.
[[nodiscard]] bool isShort(Seconds duration);

/// What becomes of two neighbours of a group.
enum class Resolution { none, endFirst, removeFirst, removeSecond };
[[nodiscard]] Resolution resolve(const RecordSpan& first, const RecordSpan& second, Date now);

}  // namespace quorvane::OverlapGroups
