#include "store/RecordHygiene.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quorvane::RecordHygiene {
namespace {

constexpr double longestHours = 24.0;
constexpr Seconds longestOpen = 3600s;
constexpr Seconds largestAdjustedOverlap = 300s;
constexpr Seconds shortestMergeable = 30s;
constexpr Seconds widestMergedGap = 30s;
constexpr Seconds shortDuration = 20s;

Seconds durationOf(const RecordSpan& ended) {
    return *ended.end - ended.start;
}

bool areMergeable(const AdjacentMerges::Merge& pair) {
    return durationOf(pair.first) >= shortestMergeable && durationOf(pair.second) >= shortestMergeable &&
           pair.gap() <= widestMergedGap && pair.gap() >= 0s;
}

Date windowOf(Date start) {
    const double length = TimeWindow::length.count();
    return dateFromSecondsSince1970(std::floor(secondsSince1970(start) / length) * length);
}

}  // namespace

bool isAbnormal(const RecordSpan& span, Date now) {
    return span.duration(now) / 1h > longestHours;
}

std::optional<Date> endOfForgotten(Date start, Date now) {
    if (now - start <= longestOpen) return std::nullopt;
    return start + longestOpen;
}

OverlapDecision decideOverlap(const RecordSpan& first, const RecordSpan& second, Date now) {
    if (!first.end || *first.end <= second.start) return OverlapDecision::none;
    if (*first.end - second.start <= largestAdjustedOverlap) return OverlapDecision::endFirst;
    return first.duration(now) < second.duration(now) ? OverlapDecision::removeFirst : OverlapDecision::removeSecond;
}

void AdjacentMerges::add(const RecordSpan& span) {
    const auto [place, isNew] = places_.try_emplace(span.bundleId, applications_.size());
    if (isNew) {
        applications_.push_back({.last = span});
        return;
    }
    Application& application = applications_[place->second];
    Merge pair{application.last, span};
    const bool merges = !application.isLastListed && areMergeable(pair);
    if (merges) application.merges.push_back(std::move(pair));
    application.last = span;
    application.isLastListed = merges;
}

std::vector<AdjacentMerges::Merge> AdjacentMerges::found() const {
    std::vector<Merge> all;
    for (const Application& application : applications_)
        std::ranges::copy(application.merges, std::back_inserter(all));
    return all;
}

const RecordSpan& TimeWindow::longest() const {
    return *std::ranges::max_element(records, {}, durationOf);
}

std::vector<RecordSpan> TimeWindow::shortOnes() const {
    std::vector<RecordSpan> found;
    if (records.size() >= 2)
        std::ranges::copy_if(records, std::back_inserter(found),
                             [](const RecordSpan& span) { return durationOf(span) < shortDuration; });
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
