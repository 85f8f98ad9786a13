#include "store/OverlapCheck.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

using OverlapGroups::Resolution;
using Records = std::vector<std::shared_ptr<ActivityRecord>>;

std::string nameOf(const ActivityRecord& record) {
    return record.appName().value_or("未知");
}

/// Removes the short records of the group and returns the rest in its order.
Records withoutShort(ModelContext& context, ConsoleSink& console, const OverlapGroup& group, Date now) {
    Records rest;
    for (const auto& record : group.records) {
        if (!OverlapGroups::isShort(RecordSpans::spanOf(*record).duration(now))) {
            rest.push_back(record);
            continue;
        }
        console.line("OverlapDetectionService: 删除短记录 - {}", nameOf(*record));
        context.remove(record);
    }
    return rest;
}

/// A removed record keeps its place: it can still meet its next neighbour.
void resolvePair(ModelContext& context, ConsoleSink& console, const std::shared_ptr<ActivityRecord>& first,
                 const std::shared_ptr<ActivityRecord>& second, Date now) {
    const auto remove = [&](const std::shared_ptr<ActivityRecord>& record) {
        console.line("OverlapDetectionService: 删除较短记录 - {}", nameOf(*record));
        context.remove(record);
    };
    switch (OverlapGroups::resolve(RecordSpans::spanOf(*first), RecordSpans::spanOf(*second), now)) {
    case Resolution::none: return;
    case Resolution::endFirst:
        first->endTime = second->startTime();
        first->updatedAt = now;
        console.line("OverlapDetectionService: 调整 {} 结束时间到 {}", nameOf(*first), describe(second->startTime()));
        return;
    case Resolution::removeFirst: return remove(first);
    case Resolution::removeSecond: return remove(second);
    }
}

}  // namespace

void resolveOverlaps(ModelContext& context, ConsoleSink& console, const std::vector<OverlapGroup>& groups, Date now) {
    for (const OverlapGroup& group : groups) {
        console.line("OverlapDetectionService: 处理重叠组，包含 {} 条记录", group.records.size());
        const Records rest = withoutShort(context, console, group, now);
        for (std::size_t i = 1; i < rest.size(); ++i)
            resolvePair(context, console, rest[i - 1], rest[i], now);
    }
    try {
        context.save();
        console.line("OverlapDetectionService: 重叠处理完成");
    } catch (const StoreError& error) {  // the changes stay in the context and go with the next save
        console.line("OverlapDetectionService: 保存失败: {}", error.what());
    }
}

OverlapCheck::OverlapCheck(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console,
                           std::size_t sliceSize)
    : context_(context.weak()), runLoop_(runLoop), console_(console), sliceSize_(sliceSize), limit_(sliceSize) {}

void OverlapCheck::begin() {
    console_.line("OverlapDetectionService: 开始检测重叠记录...");
    if (auto* context = context_.get())
        insertions_ = context->didChange.subscribe([this](const EntityChange& change) {
            if (change.kind == EntityChange::Kind::inserted) newcomers_.insert(change.entity);
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
    const Date now = runLoop_.now();
    std::vector<OverlapGroup> groups;
    for (const OverlapGroup& group : groups_)
        std::ranges::move(OverlapGroups::regrouped(group, now), std::back_inserter(groups));
    if (groups.empty()) return console_.line("OverlapDetectionService: 未发现重叠记录");
    console_.line("OverlapDetectionService: 发现 {} 个重叠组", groups.size());
    resolveOverlaps(context, console_, groups, now);
}

}  // namespace quorvane
