#include "store/DataCleanupPasses.h"

#include "store/RecordHygiene.h"
#include "store/RecordTrash.h"

#include <algorithm>
#include <unordered_map>

namespace quorvane::DataCleanupPasses {
namespace {

using R = ActivityRecord;
using RecordHygiene::OverlapDecision;
using RecordHygiene::TimeWindow;
using Records = std::vector<std::shared_ptr<R>>;

constexpr Seconds untouchedBySmartMerge = 300s;
constexpr double secondsSavedPerShortRecord = 15.0;  // an estimate for the log

std::string nameOf(const R& record, const char* missing = "未知应用") {
    return record.appName().value_or(missing);
}

/// Visits what a pass looks at, by start. The open records from before the cut-off come from an index of their own;
/// asked for in one condition with the others they would have the database walk the history.
void forEachInScope(const Scope& scope, const std::function<void(const RecordSpan&)>& visit) {
    if (scope.cutoff) {
        const auto isOld = field(&R::startTime).unindexed() < *scope.cutoff;
        RecordSpans::forEach(scope.context, {.predicate = field(&R::endTime).isNone() && isOld}, visit);
    }
    RecordSpans::forEach(scope.context, {.from = scope.cutoff}, visit);
}

/// Ends what is open but for the live record, and prints how much that is, if asked, and a line for each.
Records endOpenRecords(const Scope& scope, bool isAnnounced, std::string_view line) {
    Records open = scope.context.fetch<R>({.predicate = field(&R::endTime).isNone(), .sort = RecordSpans::order()});
    std::erase_if(open, [&](const auto& record) { return scope.live == record->id(); });
    if (open.empty()) return open;
    if (isAnnounced) scope.console.line("DataCleanupService: 发现 {} 条未结束的记录", open.size());
    for (const auto& record : open) {
        // `updatedAt` stays: should a newer form of the record come from the cloud, it wins.
        record->endTime = RecordHygiene::endOfLeftOpen(record->startTime(), record->updatedAt(), scope.now);
        scope.console.line("DataCleanupService: {} - {}", line, nameOf(*record));
    }
    scope.context.save();
    return open;
}

}  // namespace

bool Scope::mayTouch(const ActivityRecord& record) const {
    return RecordHygiene::mayTouch(context, record, live);
}

bool endLeftOpenRecords(const Scope& scope) {
    return !endOpenRecords(scope, true, "自动结束旧记录").empty();
}

bool removeAbnormalDurations(const Scope& scope) {
    Records marked;
    forEachInScope(scope, [&](const RecordSpan& span) {
        if (!RecordHygiene::isAbnormal(span, scope.now)) return;
        const auto record = RecordSpans::record(scope.context, span);
        if (!record || !scope.mayTouch(*record)) return;
        const double hours = span.duration(scope.now) / 1h;
        if (span.end)
            scope.console.line("DataCleanupService: 发现异常记录 - {} 持续 {:.1f} 小时", nameOf(*record), hours);
        else
            scope.console.line("DataCleanupService: 发现未结束的旧记录 - {} 开始于 {:.1f} 小时前", nameOf(*record),
                               hours);
        marked.push_back(record);
    });
    if (marked.empty()) return false;
    for (const auto& record : marked) {
        scope.console.line("DataCleanupService: 删除异常记录 - {}", nameOf(*record));
        RecordTrash::take(scope.context, record, RecordTrash::Pass::tooLong, scope.now);
    }
    scope.context.save();
    scope.console.line("DataCleanupService: 删除了 {} 条异常记录", marked.size());
    return true;
}

bool removeFutureDates(const Scope& scope) {
    auto future = scope.context.fetch<R>({.predicate = field(&R::startTime) > scope.now, .sort = RecordSpans::order()});
    std::erase_if(future, [&](const auto& record) { return !scope.mayTouch(*record); });
    for (const auto& record : future) {
        scope.console.line("DataCleanupService: 发现未来日期的记录 - {} 开始时间: {}", nameOf(*record),
                           describe(record->startTime()));
        scope.console.line("DataCleanupService: 删除未来日期的记录 - {}", nameOf(*record));
        RecordTrash::take(scope.context, record, RecordTrash::Pass::inTheFuture, scope.now);
    }
    if (future.empty()) return false;
    scope.context.save();
    scope.console.line("DataCleanupService: 删除了 {} 条未来日期的记录", future.size());
    return true;
}

namespace {

/// What the walk over overlapping pairs decides. It is carried out afterwards, so that the walk sees every record as it
/// was, and one that is to go can still be paired with its neighbour.
struct OverlapDecisions {
    Records removals;  ///< each once
    std::vector<std::pair<std::shared_ptr<R>, Date>> newEnds;
};

void decidePair(const Scope& scope, const RecordSpan& first, const RecordSpan& second, OverlapDecisions& decisions) {
    const auto decision = RecordHygiene::decideOverlap(first, second, scope.now);
    if (decision == OverlapDecision::none) return;
    const auto a = RecordSpans::record(scope.context, first);
    const auto b = RecordSpans::record(scope.context, second);
    if (!a || !b) return;
    const auto& loser = decision == OverlapDecision::removeSecond ? b : a;
    if (!scope.mayTouch(*loser) || RecordTrash::wasRestored(scope.context, (loser == a ? b : a)->id())) return;
    scope.console.line("DataCleanupService: 发现重叠记录 - {} 和 {}", nameOf(*a, "未知"), nameOf(*b, "未知"));
    if (decision == OverlapDecision::endFirst) {
        decisions.newEnds.emplace_back(a, second.start);
        scope.console.line("DataCleanupService: 调整 {} 的结束时间到 {}", nameOf(*a, "未知"), describe(second.start));
        return;
    }
    scope.console.line("DataCleanupService: 删除较短的记录 - {}", nameOf(*loser, "未知"));
    // Only the pair before this one can have marked it already.
    if (decisions.removals.empty() || decisions.removals.back() != loser) decisions.removals.push_back(loser);
}

}  // namespace

bool resolveOverlappingPairs(const Scope& scope) {
    OverlapDecisions decisions;
    std::optional<RecordSpan> previous;
    forEachInScope(scope, [&](const RecordSpan& span) {
        if (previous) decidePair(scope, *previous, span, decisions);
        previous = span;
    });
    if (decisions.removals.empty() && decisions.newEnds.empty()) return false;
    for (const auto& record : decisions.removals)
        RecordTrash::take(scope.context, record, RecordTrash::Pass::overlap, scope.now);
    for (const auto& [record, end] : decisions.newEnds)
        if (!record->isDeleted())
            RecordTrash::cutEnd(scope.context, *record, end, RecordTrash::Pass::overlap, scope.now);
    scope.context.save();
    scope.console.line("DataCleanupService: 处理了 {} 条重叠记录，修改了 {} 条记录", decisions.removals.size(),
                       decisions.newEnds.size());
    return true;
}

namespace {

struct AdjacentMerge {
    RecordSpan first;  ///< with the end that earlier merges gave it
    RecordSpan second;
};

bool mayMerge(const Scope& scope, const RecordSpan& first, const RecordSpan& second) {
    if (!RecordHygiene::areMergeable(first, second)) return false;
    const auto a = RecordSpans::record(scope.context, first);
    const auto b = RecordSpans::record(scope.context, second);
    return a && b && a->activityType() == rawValue(ActivityType::app) && RecordSpans::agree(*a, *b) &&
           scope.mayTouch(*a) && scope.mayTouch(*b);
}

/// In the order of their start; of several in a row each joins the first.
std::vector<AdjacentMerge> adjacentMerges(const Scope& scope) {
    std::vector<AdjacentMerge> found;
    std::optional<RecordSpan> previous;
    RecordSpans::forEach(scope.context, {.from = scope.cutoff, .withContent = true}, [&](const RecordSpan& span) {
        if (!previous || !mayMerge(scope, *previous, span)) {
            previous = span;
            return;
        }
        found.push_back({*previous, span});
        previous->end = span.end;
    });
    return found;
}

}  // namespace

bool mergeAdjacentRecords(const Scope& scope) {
    const auto merges = adjacentMerges(scope);
    for (const auto& [first, second] : merges) {
        const auto current = RecordSpans::record(scope.context, first);
        const auto next = RecordSpans::record(scope.context, second);
        if (!current || !next) continue;
        const std::string name = nameOf(*current);
        scope.console.line("DataCleanupService: 发现可合并的相邻记录 - {}", name);
        scope.console.line("  当前记录: {:.1f}秒, 下一记录: {:.1f}秒, 间隔: {:.1f}秒",
                           first.duration(scope.now).count(), second.duration(scope.now).count(),
                           (second.start - *first.end).count());
        current->endTime = second.end;
        current->updatedAt = scope.now;
        scope.context.remove(next);  // its minutes stay where they are
        scope.console.line("DataCleanupService: 合并记录 - {} 合并后时长 {:.1f} 分钟", name,
                           (*second.end - first.start) / 1min);
    }
    if (merges.empty()) {
        scope.console.line("DataCleanupService: 没有发现需要合并的相邻记录");
        return false;
    }
    scope.context.save();
    scope.console.line("DataCleanupService: 合并了 {} 对相邻记录，删除了 {} 条记录", merges.size(), merges.size());
    return true;
}

namespace {

/// What becomes of the fragments among the records from the cut-off on.
class Fragments {
public:
    explicit Fragments(const Scope& scope);

    /// Of those that ended more than five minutes ago.
    [[nodiscard]] const std::vector<TimeWindow>& windows() const { return windows_; }

    void handle(const TimeWindow& window, const std::vector<RecordSpan>& shortOnes);

    [[nodiscard]] std::size_t removed() const { return removed_; }

private:
    enum class Outcome { joined, mustStay, hasNoPeer };

    [[nodiscard]] bool isSettledByAge(const RecordSpan& span) const {
        return span.end && *span.end < scope_.now - untouchedBySmartMerge;
    }
    [[nodiscard]] RecordSpan* neighbour(std::size_t place, int step);
    [[nodiscard]] Outcome join(std::size_t place, R& record);
    bool joinOne(RecordSpan& peer, const RecordSpan& fragment, const R& record);

    const Scope& scope_;
    std::vector<RecordSpan> spans_;                         ///< all, in order, as they have become
    std::unordered_map<std::int64_t, std::size_t> places_;  ///< of the short ones, by object
    std::vector<bool> isGone_;
    std::vector<TimeWindow> windows_;
    std::size_t removed_ = 0;
};

Fragments::Fragments(const Scope& scope) : scope_(scope) {
    std::vector<RecordSpan> old;
    RecordSpans::forEach(scope.context, {.from = scope.cutoff, .withContent = true}, [&](const RecordSpan& span) {
        if (isSettledByAge(span)) {
            if (RecordHygiene::isShort(span)) places_.emplace(span.objectId, spans_.size());
            old.push_back(span);
        }
        spans_.push_back(span);
    });
    isGone_.resize(spans_.size());
    scope.console.line("DataCleanupService: 找到 {} 条5分钟前的记录", old.size());
    windows_ = RecordHygiene::timeWindows(old);
    scope.console.line("DataCleanupService: 分成了 {} 个2分钟时间窗口", windows_.size());
}

RecordSpan* Fragments::neighbour(std::size_t place, int step) {
    auto at = static_cast<std::ptrdiff_t>(place) + step;
    while (at >= 0 && at < std::ssize(spans_) && isGone_[static_cast<std::size_t>(at)])
        at += step;
    return at < 0 || at >= std::ssize(spans_) ? nullptr : &spans_[static_cast<std::size_t>(at)];
}

/// A fragment joins only who is paid for by the same project.
bool Fragments::joinOne(RecordSpan& peer, const RecordSpan& fragment, const R& record) {
    if (!isSettledByAge(peer)) return false;
    const auto into = RecordSpans::record(scope_.context, peer);
    if (!into || into->activityType() != record.activityType() || into->appName() != record.appName() ||
        into->project() != record.project() || !scope_.mayTouch(*into))
        return false;
    if (peer.start < fragment.start)
        into->endTime = peer.end = fragment.end;
    else
        into->startTime = peer.start = fragment.start;
    into->updatedAt = scope_.now;
    return true;
}

Fragments::Outcome Fragments::join(std::size_t place, R& record) {
    const RecordSpan fragment = spans_[place];
    auto* const before = neighbour(place, -1);
    auto* const after = neighbour(place, +1);
    const bool hasBefore = before != nullptr && RecordHygiene::abut(*before, fragment);
    const bool hasAfter = after != nullptr && RecordHygiene::abut(fragment, *after);
    if ((hasBefore && joinOne(*before, fragment, record)) || (hasAfter && joinOne(*after, fragment, record)))
        return Outcome::joined;
    return hasBefore || hasAfter ? Outcome::mustStay : Outcome::hasNoPeer;
}

/// All short records of the window but for its longest.
void Fragments::handle(const TimeWindow& window, const std::vector<RecordSpan>& shortOnes) {
    const auto longest = RecordSpans::record(scope_.context, window.longest());
    if (!longest) return;
    scope_.console.line("DataCleanupService: 时间窗口 {} - {}", describe(window.start),
                        describe(window.start + TimeWindow::length));
    scope_.console.line("  窗口内有 {} 条记录，其中 {} 条短记录", window.records.size(), shortOnes.size());
    scope_.console.line("  最长记录: {} ({:.1f}秒)", nameOf(*longest, "未知"),
                        window.longest().duration(scope_.now).count());
    for (const RecordSpan& span : shortOnes) {
        const auto record = span.id == window.longest().id ? nullptr : RecordSpans::record(scope_.context, span);
        if (!record || !scope_.mayTouch(*record)) continue;
        const std::size_t place = places_.at(span.objectId);
        if (!RecordHygiene::isShort(spans_[place])) continue;  // it has taken in another one
        const Outcome outcome = join(place, *record);
        if (outcome == Outcome::mustStay) continue;
        isGone_[place] = true;
        ++removed_;
        scope_.console.line("    {}: {} ({:.1f}秒)", outcome == Outcome::joined ? "合并短记录" : "删除短记录",
                            nameOf(*record, "未知"), span.duration(scope_.now).count());
        if (outcome == Outcome::joined)
            scope_.context.remove(record);
        else
            RecordTrash::take(scope_.context, record, RecordTrash::Pass::fragment, scope_.now);
    }
}

}  // namespace

bool mergeShortRecords(const Scope& scope) {
    Fragments fragments(scope);
    int windowsWithShortRecords = 0;
    for (const TimeWindow& window : fragments.windows()) {
        const auto shortOnes = window.shortOnes();
        if (shortOnes.empty()) continue;
        ++windowsWithShortRecords;
        fragments.handle(window, shortOnes);
    }
    if (fragments.removed() == 0) {
        scope.console.line("DataCleanupService: 没有发现需要合并的短时间记录");
        return false;
    }
    scope.context.save();
    scope.console.line("DataCleanupService: ✅ 智能合并完成");
    scope.console.line("  处理了 {} 个时间窗口", windowsWithShortRecords);
    scope.console.line("  删除了 {} 条短记录", fragments.removed());
    scope.console.line("  节省了约 {:.1f} 秒的记录碎片",
                       static_cast<double>(fragments.removed()) * secondsSavedPerShortRecord);
    return true;
}

bool emptyOldTrash(const Scope& scope) {
    if (RecordTrash::empty(scope.context, scope.now - RecordTrash::lifetime) == 0) return false;
    scope.context.save();
    return true;
}

bool endActiveRecords(const Scope& scope) {
    const Records ended = endOpenRecords(scope, false, "结束活跃记录");
    if (!ended.empty()) scope.console.line("DataCleanupService: 结束了 {} 条活跃记录", ended.size());
    return !ended.empty();
}

}  // namespace quorvane::DataCleanupPasses
