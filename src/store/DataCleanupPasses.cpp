#include "store/DataCleanupPasses.h"

#include "store/RecordHygiene.h"

#include <algorithm>

namespace quorvane::DataCleanupPasses {
namespace {

using R = ActivityRecord;
using RecordHygiene::AdjacentMerges;
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

Records openRecords(ModelContext& context) {
    return context.fetch<R>({.predicate = field(&R::endTime).isNone(), .sort = RecordSpans::order()});
}

}  // namespace

void removeAbnormalDurations(const Scope& scope) {
    Records marked;
    forEachInScope(scope, [&](const RecordSpan& span) {
        if (!RecordHygiene::isAbnormal(span, scope.now)) return;
        const auto record = RecordSpans::record(scope.context, span);
        if (!record) return;
        const double hours = span.duration(scope.now) / 1h;
        if (span.end)
            scope.console.line("DataCleanupService: 发现异常记录 - {} 持续 {:.1f} 小时", nameOf(*record), hours);
        else
            scope.console.line("DataCleanupService: 发现未结束的旧记录 - {} 开始于 {:.1f} 小时前", nameOf(*record),
                               hours);
        marked.push_back(record);
    });
    if (marked.empty()) return;
    for (const auto& record : marked) {
        scope.console.line("DataCleanupService: 删除异常记录 - {}", nameOf(*record));
        scope.context.remove(record);
    }
    scope.context.save();
    scope.console.line("DataCleanupService: 删除了 {} 条异常记录", marked.size());
}

void removeFutureDates(const Scope& scope) {
    const auto future =
        scope.context.fetch<R>({.predicate = field(&R::startTime) > scope.now, .sort = RecordSpans::order()});
    for (const auto& record : future) {
        scope.console.line("DataCleanupService: 发现未来日期的记录 - {} 开始时间: {}", nameOf(*record),
                           describe(record->startTime()));
        scope.console.line("DataCleanupService: 删除未来日期的记录 - {}", nameOf(*record));
        scope.context.remove(record);
    }
    if (future.empty()) return;
    scope.context.save();
    scope.console.line("DataCleanupService: 删除了 {} 条未来日期的记录", future.size());
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
    scope.console.line("DataCleanupService: 发现重叠记录 - {} 和 {}", nameOf(*a, "未知"), nameOf(*b, "未知"));
    if (decision == OverlapDecision::endFirst) {
        decisions.newEnds.emplace_back(a, second.start);
        scope.console.line("DataCleanupService: 调整 {} 的结束时间到 {}", nameOf(*a, "未知"), describe(second.start));
        return;
    }
    const auto& shorter = decision == OverlapDecision::removeFirst ? a : b;
    scope.console.line("DataCleanupService: 删除较短的记录 - {}", nameOf(*shorter, "未知"));
    // Only the pair before this one can have marked it already.
    if (decisions.removals.empty() || decisions.removals.back() != shorter) decisions.removals.push_back(shorter);
}

}  // namespace

void resolveOverlappingPairs(const Scope& scope) {
    OverlapDecisions decisions;
    std::optional<RecordSpan> previous;
    forEachInScope(scope, [&](const RecordSpan& span) {
        if (previous) decidePair(scope, *previous, span, decisions);
        previous = span;
    });
    if (decisions.removals.empty() && decisions.newEnds.empty()) return;
    for (const auto& record : decisions.removals)
        scope.context.remove(record);
    for (const auto& [record, end] : decisions.newEnds) {
        record->endTime = end;
        record->updatedAt = scope.now;
    }
    scope.context.save();
    scope.console.line("DataCleanupService: 处理了 {} 条重叠记录，修改了 {} 条记录", decisions.removals.size(),
                       decisions.newEnds.size());
}

void endForgottenRecords(const Scope& scope) {
    const Records open = openRecords(scope.context);
    if (open.empty()) return;
    scope.console.line("DataCleanupService: 发现 {} 条未结束的记录", open.size());
    for (const auto& record : open) {
        const auto end = RecordHygiene::endOfForgotten(record->startTime(), scope.now);
        if (!end) continue;
        record->endTime = end;
        record->updatedAt = scope.now;
        scope.console.line("DataCleanupService: 自动结束旧记录 - {}", nameOf(*record));
    }
    scope.context.save();
}

namespace {

std::vector<AdjacentMerges::Merge> adjacentMerges(const Scope& scope) {
    const auto isApp = field(&R::activityType) == std::string(rawValue(ActivityType::app));
    const auto hasBundleId = field(&R::appBundleId).isPresent() && field(&R::appBundleId) != std::string();
    AdjacentMerges merges;
    // An open record can't be merged, so the cut-off needs no exception for it.
    RecordSpans::forEach(scope.context,
                         {.predicate = isApp && hasBundleId && field(&R::endTime).isPresent(),
                          .from = scope.cutoff,
                          .withBundleId = true},
                         [&](const RecordSpan& span) { merges.add(span); });
    return merges.found();
}

}  // namespace

void mergeAdjacentRecords(const Scope& scope) {
    Records removals;
    for (const auto& merge : adjacentMerges(scope)) {
        const auto current = RecordSpans::record(scope.context, merge.first);
        const auto next = RecordSpans::record(scope.context, merge.second);
        if (!current || !next) continue;
        const std::string name = nameOf(*current);
        scope.console.line("DataCleanupService: 发现可合并的相邻记录 - {}", name);
        scope.console.line("  当前记录: {:.1f}秒, 下一记录: {:.1f}秒, 间隔: {:.1f}秒",
                           merge.first.duration(scope.now).count(), merge.second.duration(scope.now).count(),
                           merge.gap().count());
        current->endTime = merge.second.end;
        current->updatedAt = scope.now;
        removals.push_back(next);
        scope.console.line("DataCleanupService: 合并记录 - {} 合并后时长 {:.1f} 分钟", name,
                           (*merge.second.end - merge.first.start) / 1min);
    }
    if (removals.empty()) return scope.console.line("DataCleanupService: 没有发现需要合并的相邻记录");
    for (const auto& record : removals)
        scope.context.remove(record);
    scope.context.save();
    scope.console.line("DataCleanupService: 合并了 {} 对相邻记录，删除了 {} 条记录", removals.size(), removals.size());
}

namespace {

std::vector<TimeWindow> settledWindows(const Scope& scope) {
    std::vector<RecordSpan> settled;
    RecordSpans::forEach(
        scope.context,
        {.predicate = field(&R::endTime).unindexed() < scope.now - untouchedBySmartMerge, .from = scope.cutoff},
        [&](const RecordSpan& span) { settled.push_back(span); });
    scope.console.line("DataCleanupService: 找到 {} 条5分钟前的记录", settled.size());
    auto windows = RecordHygiene::timeWindows(settled);
    scope.console.line("DataCleanupService: 分成了 {} 个2分钟时间窗口", windows.size());
    return windows;
}

/// Adds the short records of the window to the list, but for its longest.
void listShortRecords(const Scope& scope, const TimeWindow& window, const std::vector<RecordSpan>& shortOnes,
                      Records& removals) {
    const auto longest = RecordSpans::record(scope.context, window.longest());
    if (!longest) return;
    scope.console.line("DataCleanupService: 时间窗口 {} - {}", describe(window.start),
                       describe(window.start + TimeWindow::length));
    scope.console.line("  窗口内有 {} 条记录，其中 {} 条短记录", window.records.size(), shortOnes.size());
    scope.console.line("  最长记录: {} ({:.1f}秒)", nameOf(*longest, "未知"),
                       window.longest().duration(scope.now).count());
    for (const RecordSpan& span : shortOnes) {
        if (span.id == window.longest().id) continue;
        const auto record = RecordSpans::record(scope.context, span);
        if (!record) continue;
        removals.push_back(record);
        scope.console.line("    删除短记录: {} ({:.1f}秒)", nameOf(*record, "未知"), span.duration(scope.now).count());
    }
}

}  // namespace

void mergeShortRecords(const Scope& scope) {
    Records removals;
    int windowsWithShortRecords = 0;
    for (const TimeWindow& window : settledWindows(scope)) {
        const auto shortOnes = window.shortOnes();
        if (shortOnes.empty()) continue;
        ++windowsWithShortRecords;
        listShortRecords(scope, window, shortOnes, removals);
    }
    if (removals.empty()) return scope.console.line("DataCleanupService: 没有发现需要合并的短时间记录");
    for (const auto& record : removals)
        scope.context.remove(record);
    scope.context.save();
    scope.console.line("DataCleanupService: ✅ 智能合并完成");
    scope.console.line("  处理了 {} 个时间窗口", windowsWithShortRecords);
    scope.console.line("  删除了 {} 条短记录", removals.size());
    scope.console.line("  节省了约 {:.1f} 秒的记录碎片",
                       static_cast<double>(removals.size()) * secondsSavedPerShortRecord);
}

void endActiveRecords(const Scope& scope) {
    const Records open = openRecords(scope.context);
    if (open.empty()) return;
    for (const auto& record : open) {
        record->endTime = scope.now;
        record->updatedAt = scope.now;
        scope.console.line("DataCleanupService: 结束活跃记录 - {}", nameOf(*record));
    }
    scope.context.save();
    scope.console.line("DataCleanupService: 结束了 {} 条活跃记录", open.size());
}

}  // namespace quorvane::DataCleanupPasses
