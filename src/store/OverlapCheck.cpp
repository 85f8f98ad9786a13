#include "store/OverlapCheck.h"

#include "store/RecordHygiene.h"
#include "store/RecordTrash.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

using DataCleanupPasses::Scope;
using OverlapGroups::Resolution;
using RecordTrash::Pass;
using Records = std::vector<std::shared_ptr<ActivityRecord>>;

std::string nameOf(const ActivityRecord& record) {
    return record.appName().value_or("未知");
}

/// Removes the short records of the group and returns the rest in its order.
Records withoutShort(const Scope& scope, const OverlapGroup& group) {
    Records rest;
    for (const auto& record : group.records) {
        if (!OverlapGroups::isShort(RecordSpans::spanOf(*record).duration(scope.now)) || !scope.mayTouch(*record)) {
            rest.push_back(record);
            continue;
        }
        scope.console.line("OverlapDetectionService: 删除短记录 - {}", nameOf(*record));
        RecordTrash::take(scope.context, record, Pass::overlapGroup, scope.now);
    }
    return rest;
}

/// A removed record keeps its place: it can still meet its next neighbour. Who brought a record back wants the overlap.
void resolvePair(const Scope& scope, const std::shared_ptr<ActivityRecord>& first,
                 const std::shared_ptr<ActivityRecord>& second) {
    const auto resolution =
        OverlapGroups::resolve(RecordSpans::spanOf(*first), RecordSpans::spanOf(*second), scope.now);
    if (resolution == Resolution::none) return;
    const bool losesSecond = resolution == Resolution::removeSecond;
    const auto& loser = losesSecond ? second : first;
    if (!scope.mayTouch(*loser) || RecordTrash::wasRestored(scope.context, (losesSecond ? first : second)->id()))
        return;
    if (resolution == Resolution::endFirst) {
        if (!first->isDeleted())
            RecordTrash::cutEnd(scope.context, *first, second->startTime(), Pass::overlapGroup, scope.now);
        scope.console.line("OverlapDetectionService: 调整 {} 结束时间到 {}", nameOf(*first),
                           describe(second->startTime()));
        return;
    }
    scope.console.line("OverlapDetectionService: 删除较短记录 - {}", nameOf(*loser));
    RecordTrash::take(scope.context, loser, Pass::overlapGroup, scope.now);
}

}  // namespace

bool resolveOverlaps(const Scope& scope, const std::vector<OverlapGroup>& groups) {
    bool wentAny = false;
    for (const OverlapGroup& group : groups) {
        scope.console.line("OverlapDetectionService: 处理重叠组，包含 {} 条记录", group.records.size());
        const Records rest = withoutShort(scope, group);
        for (std::size_t i = 1; i < rest.size(); ++i)
            resolvePair(scope, rest[i - 1], rest[i]);
        wentAny = wentAny || std::ranges::any_of(group.records, [](const auto& record) { return record->isDeleted(); });
    }
    try {
        scope.context.save();
        scope.console.line("OverlapDetectionService: 重叠处理完成");
        return wentAny;
    } catch (const StoreError& error) {  // the changes stay in the context and go with the next save
        scope.console.line("OverlapDetectionService: 保存失败: {}", error.what());
        return false;
    }
}

OverlapCheck::OverlapCheck(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console,
                           std::size_t sliceSize, LiveRecord liveRecord)
    : context_(context.weak()), runLoop_(runLoop), console_(console), sliceSize_(sliceSize), limit_(sliceSize),
      liveRecord_(std::move(liveRecord)) {}

Scope OverlapCheck::scope(ModelContext& context) const {
    return {.context = context,
            .console = console_,
            .now = runLoop_.now(),
            .live = liveRecord_ ? liveRecord_() : std::nullopt};
}

void OverlapCheck::begin() {
    console_.line("OverlapDetectionService: 开始检测重叠记录...");
    auto* context = context_.get();
    if (context == nullptr) return;
    try {
        DataCleanupPasses::endLeftOpenRecords(scope(*context));
    } catch (const StoreError& error) {
        return console_.line("OverlapDetectionService: 检测重叠失败: {}", error.what());
    }
    insertions_ = context->didChange.subscribe([this](const EntityChange& change) {
        if (change.kind == EntityChange::Kind::inserted &&
            &change.entity->entityDescription() == &ActivityRecord::description())
            newcomers_.insert(change.entity);
    });
    continueReading();
}

void OverlapCheck::continueReading() {
    auto* context = context_.get();
    if (context == nullptr) return;
    try {
        readSlice(*context);
    } catch (const StoreError& error) {
        console_.line("OverlapDetectionService: 检测重叠失败: {}", error.what());
    }
}

void OverlapCheck::readSlice(ModelContext& context) {
    // What the tracker has not saved yet would make an object of each record that is read.
    if (context.hasChanges()) context.save();
    auto spans = RecordSpans::read(context, {.from = from_}, limit_);
    const bool isLast = spans.size() < limit_;
    removeNewcomers(spans);
    if (isLast) {
        keepGroups(context, spans);
        return conclude(context);
    }
    // The next slice begins where no group goes on: each one can be understood alone.
    const std::size_t complete = OverlapGroups::completeSpans(spans, runLoop_.now());
    if (complete == 0) {
        limit_ *= 2;
    } else {
        limit_ = sliceSize_;
        from_ = spans[complete].start;
        spans.resize(complete);
        keepGroups(context, spans);
    }
    runLoop_.post([self = shared_from_this()] { self->continueReading(); });
}

void OverlapCheck::keepGroups(ModelContext& context, const std::vector<RecordSpan>& spans) {
    for (const auto& range : OverlapGroups::find(spans, runLoop_.now())) {
        OverlapGroup group;
        for (std::size_t i = range.first; i < range.end; ++i)
            if (auto record = RecordSpans::record(context, spans[i])) group.records.push_back(std::move(record));
        groups_.push_back(std::move(group));
    }
}

/// A record that begins after the check did is the tracker's newest: still short, and not yet to be judged.
void OverlapCheck::removeNewcomers(std::vector<RecordSpan>& spans) const {
    std::unordered_set<std::int64_t> ids;
    for (const auto& newcomer : newcomers_)
        ids.insert(newcomer->objectId());
    std::erase_if(spans, [&](const RecordSpan& span) { return ids.contains(span.objectId); });
}

void OverlapCheck::conclude(ModelContext& context) {
    const Scope now = scope(context);
    std::vector<OverlapGroup> groups;
    for (const OverlapGroup& group : std::exchange(groups_, {}))
        std::ranges::move(OverlapGroups::regrouped(group, now.now), std::back_inserter(groups));
    if (groups.empty()) {
        if (!isRepeated_) console_.line("OverlapDetectionService: 未发现重叠记录");
        return;
    }
    console_.line("OverlapDetectionService: 发现 {} 个重叠组", groups.size());
    if (!resolveOverlaps(now, groups)) return;
    isRepeated_ = true;
    from_.reset();
    limit_ = sliceSize_;
    readSlice(context);
}

}  // namespace quorvane
