#include "store/OverlapDetectionService.h"

#include "base/Calendar.h"
#include "store/OverlapCheck.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

using R = ActivityRecord;

/// Records that reach into the time between the two, which itself is not included; of open ones, which last until now,
/// and of others at most `limit` each. Two fetches, since a single one would walk the history: ordered by its end, what
/// ended after `start` is at hand, whereas what began before `end` is nearly everything.
std::vector<std::shared_ptr<R>> reachingInto(ModelContext& context, Date start, Date end, Date now,
                                             std::optional<std::size_t> limit = std::nullopt) {
    const auto beganBefore = field(&R::startTime).unindexed() < end;
    auto found = context.fetch<R>(
        {.predicate = field(&R::endTime) > start && beganBefore, .sort = {ascending(&R::endTime)}, .limit = limit});
    if (now > start)
        std::ranges::move(context.fetch<R>({.predicate = field(&R::endTime).isNone() && beganBefore, .limit = limit}),
                          std::back_inserter(found));
    return found;
}

}  // namespace

OverlapDetectionService::OverlapDetectionService(ModelContext& modelContext, platform::RunLoop& runLoop,
                                                 ConsoleSink& console, std::size_t sliceSize, LiveRecord liveRecord)
    : modelContext_(modelContext), runLoop_(runLoop), console_(console), sliceSize_(sliceSize),
      liveRecord_(std::move(liveRecord)) {}

void OverlapDetectionService::detectAndResolveOverlaps() {
    std::make_shared<OverlapCheck>(modelContext_, runLoop_, console_, sliceSize_, liveRecord_)->begin();
}

void OverlapDetectionService::detectAndResolveOverlaps(Date on) {
    const Date now = runLoop_.now();
    try {
        const DataCleanupPasses::Scope scope{.context = modelContext_,
                                             .console = console_,
                                             .now = now,
                                             .live = liveRecord_ ? liveRecord_() : std::nullopt};
        DataCleanupPasses::endLeftOpenRecords(scope);
        const auto day = Calendar::current().day(on);
        for (bool isFirst = true;; isFirst = false) {
            const auto groups = OverlapGroups::regrouped({reachingInto(modelContext_, day.start, day.end, now)}, now);
            if (groups.empty() && isFirst) console_.line("OverlapDetectionService: 在 {} 未发现重叠记录", describe(on));
            if (groups.empty()) return;
            console_.line("OverlapDetectionService: 在 {} 发现 {} 个重叠组", describe(on), groups.size());
            if (!resolveOverlaps(scope, groups)) return;
        }
    } catch (const StoreError& error) {
        console_.line("OverlapDetectionService: 检测日期重叠失败: {}", error.what());
    }
}

bool OverlapDetectionService::hasOverlap(Date start, Date end, const ActivityRecord* excluding) {
    try {
        const auto found = reachingInto(modelContext_, start, end, runLoop_.now(), excluding == nullptr ? 1 : 2);
        return std::any_of(found.begin(), found.end(),
                           [&](const auto& record) { return excluding == nullptr || record->id() != excluding->id(); });
    } catch (const StoreError& error) {  // a broken store must not stop tracking
        console_.line("OverlapDetectionService: 检查重叠失败: {}", error.what());
        return false;
    }
}

Date OverlapDetectionService::suggestedEndTime(Date after) {
    const Date now = runLoop_.now();
    try {
        const auto next = modelContext_.fetch<R>(
            {.predicate = field(&R::startTime) > after, .sort = {ascending(&R::startTime)}, .limit = 1});
        return next.empty() ? now : std::min(now, next.front()->startTime());
    } catch (const StoreError& error) {
        console_.line("OverlapDetectionService: 获取建议结束时间失败: {}", error.what());
        return now;
    }
}

}  // namespace quorvane
