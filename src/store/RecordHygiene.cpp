#include "store/RecordHygiene.h"

#include "store/RecordTrash.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quorvane::RecordHygiene {
namespace {

constexpr double longestHours = 24.0;
constexpr Seconds shortestRecord = 1s;
constexpr Seconds largestAdjustedOverlap = 300s;
constexpr Seconds shortestMergeable = 30s;
constexpr Seconds widestMergedGap = 30s;
constexpr Seconds widestAbuttingGap = 1s;
constexpr Seconds shortDuration = 20s;

Seconds durationOf(const RecordSpan& ended) {
    return *ended.end - ended.start;
}

Date windowOf(Date start) {
    const double length = TimeWindow::length.count();
    return dateFromSecondsSince1970(std::floor(secondsSince1970(start) / length) * length);
}

}  // namespace

bool mayTouch(ModelContext& context, const ActivityRecord& record, const std::optional<Uuid>& live) {
    return live != record.id() && !isSettled(record) && !RecordTrash::wasRestored(context, record.id());
}

bool isSettled(const ActivityRecord& record) {
    return record.billingStatus() != rawValue(BillingStatus::review) || !record.cloudKitRecordID().value_or("").empty();
}

bool isAbnormal(const RecordSpan& span, Date now) {
    return span.duration(now) / 1h > longestHours;
}

Date endOfLeftOpen(Date start, Date lastSign, Date now) {
    return std::max(std::min(lastSign, now), start + shortestRecord);
}

OverlapDecision decideOverlap(const RecordSpan& first, const RecordSpan& second, Date now) {
    if (!first.end || *first.end <= second.start) return OverlapDecision::none;
    if (*first.end - second.start <= largestAdjustedOverlap) return OverlapDecision::endFirst;
    return first.duration(now) < second.duration(now) ? OverlapDecision::removeFirst : OverlapDecision::removeSecond;
}

bool areMergeable(const RecordSpan& first, const RecordSpan& second) {
    if (!first.end || !second.end || first.bundleId.empty() || first.likeness != second.likeness) return false;
    const Seconds gap = second.start - *first.end;
    return durationOf(first) >= shortestMergeable && durationOf(second) >= shortestMergeable && gap >= 0s &&
           gap <= widestMergedGap && (*second.end - first.start) / 1h <= longestHours;
}

bool abut(const RecordSpan& first, const RecordSpan& second) {
    if (!first.end || first.bundleId.empty() || first.bundleId != second.bundleId) return false;
    const Date end = second.end.value_or(second.start);
    const Seconds gap = second.start - *first.end;
    return durationOf(first) >= 0s && end >= second.start && gap >= 0s && gap <= widestAbuttingGap &&
           (end - first.start) / 1h <= longestHours;
}

bool isShort(const RecordSpan& ended) {
    return durationOf(ended) < shortDuration;
}

const RecordSpan& TimeWindow::longest() const {
    return *std::ranges::max_element(records, {}, durationOf);
}

std::vector<RecordSpan> TimeWindow::shortOnes() const {
    std::vector<RecordSpan> found;
    if (records.size() >= 2) std::ranges::copy_if(records, std::back_inserter(found), isShort);
    return found;
}

std::vector<TimeWindow> timeWindows(const std::vector<RecordSpan>& spans) {
    std::vector<TimeWindow> windows;
    for (const RecordSpan& span : spans) {
        const Date start = windowOf(span.start);
        if (windows.empty() || windows.back().start != start) windows.push_back({.start = start, .records = {}});
        windows.back().records.push_back(span);
    }
    return windows;
}

}  // namespace quorvane::RecordHygiene
