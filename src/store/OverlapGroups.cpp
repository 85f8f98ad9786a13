#include "store/OverlapGroups.h"

#include <algorithm>
#include <iterator>

namespace quorvane::OverlapGroups {
namespace {

constexpr Seconds shortDuration = 30s;
constexpr Seconds adjustableOverlap = 300s;  // from here on the shorter record goes

bool beginsRun(const std::vector<RecordSpan>& spans, std::size_t place, Date now) {
    return place == 0 || spans[place].start >= spans[place - 1].endOr(now);
}

}  // namespace

std::vector<Range> find(const std::vector<RecordSpan>& spans, Date now) {
    std::vector<Range> groups;
    for (std::size_t first = 0; first < spans.size();) {
        std::size_t end = first + 1;
        while (end < spans.size() && !beginsRun(spans, end, now))
            ++end;
        if (end - first >= 2) groups.push_back({first, end});
        first = end;
    }
    return groups;
}

std::size_t completeSpans(const std::vector<RecordSpan>& spans, Date now) {
    for (std::size_t place = spans.size(); place-- > 1;)
        if (beginsRun(spans, place, now) && spans[place].start != spans[place - 1].start) return place;
    return 0;
}

std::vector<OverlapGroup> regrouped(const OverlapGroup& group, Date now) {
    std::vector<std::shared_ptr<ActivityRecord>> left;
    std::copy_if(group.records.begin(), group.records.end(), std::back_inserter(left),
                 [](const auto& record) { return !record->isDeleted(); });
    std::ranges::sort(
        left, [order = RecordSpans::order()](const auto& a, const auto& b) { return comesBefore(*a, *b, order); });
    std::vector<RecordSpan> spans;
    std::transform(left.begin(), left.end(), std::back_inserter(spans),
                   [](const auto& record) { return RecordSpans::spanOf(*record); });
    std::vector<OverlapGroup> groups;
    for (const Range& range : find(spans, now))
        groups.push_back({{left.begin() + static_cast<std::ptrdiff_t>(range.first),
                           left.begin() + static_cast<std::ptrdiff_t>(range.end)}});
    return groups;
}

bool isShort(Seconds duration) {
    return duration < shortDuration;
}

Resolution resolve(const RecordSpan& first, const RecordSpan& second, Date now) {
    const Seconds overlap = first.endOr(now) - second.start;
    if (overlap <= 0s) return Resolution::none;
    if (overlap < adjustableOverlap) return Resolution::endFirst;
    return first.duration(now) < second.duration(now) ? Resolution::removeFirst : Resolution::removeSecond;
}

}  // namespace quorvane::OverlapGroups
