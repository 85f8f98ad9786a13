#include "base/Text.h"
#include "rules/RuleEngine.h"
#include "store/OverlapDetectionService.h"
#include "store/Rule.h"
#include "tracking/ActivityTracker.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr Seconds shortRecordDuration = 20s;
constexpr Seconds activeRecordsSweepInterval = 300s;
constexpr Seconds currentRecordHeartbeatInterval = 60s;

/// A duration as the lines show it, without the noise below the microsecond that dates carry.
std::string durationText(Seconds duration) {
    return text::shortest(std::round(duration.count() * 1e6) / 1e6);
}

}  // namespace

/// How long the next record has to wait: each lasts a second at least, and no two of ours overlap.
Seconds ActivityTracker::untilNextRecord(Date now) const {
    const Date earliest = currentRecord_ ? currentRecord_->startTime() + minimumDuration : lastRecordEnd_.value_or(now);
    const Seconds rest = earliest - now;
    return rest > 0s && rest <= minimumDuration ? rest : 0s;  // one far ahead is of a clock that was wrong
}

void ActivityTracker::startNewRecord(const NewRecord& wanted) {
    auto* context = modelContext_.get();
    if (context == nullptr) {
        console_.line("ActivityTracker: No modelContext for startNewRecord");
        return;
    }
    sweepActiveRecordsIfNeeded();
    const auto record = makeRecord(wanted, adjustedStart(wanted.at, *context));
    applyRules(*record, *context);
    classified_ = classification(*record);
    context->insert(record);
    currentRecord_ = record;
    lastCurrentRecordHeartbeatAt_ = runLoop_.uptime();
    const std::string& name = wanted.application.localizedName;
    try {
        context->save();
        console_.line("ActivityTracker: Created new record for {} at {}", name, describe(record->startTime()));
    } catch (const StoreError& error) {
        // It stays current: the next heartbeat or its end saves it.
        console_.line("ActivityTracker: Failed to save new record for {}: {}", name, error.what());
    }
}

/// The start moved behind what is already recorded, and never into the future.
Date ActivityTracker::adjustedStart(Date wanted, ModelContext& context) {
    Date startTime = wanted;
    OverlapDetectionService overlaps(context, runLoop_, console_);
    if (overlaps.hasOverlap(wanted, runLoop_.now())) {
        console_.line("ActivityTracker: 新记录会与现有记录重叠，调整开始时间");
        startTime = std::max(overlaps.suggestedEndTime(wanted), wanted);
    }
    const Date now = runLoop_.now();
    if (startTime > now) {
        console_.line("ActivityTracker: ⚠️ 检测到 startTime 在未来 ({})，夹回当前时间",
                      describe(startTime));
        startTime = now;
    }
    if (startTime != wanted)
        console_.line("ActivityTracker: 调整开始时间从 {} 到 {}", describe(wanted), describe(startTime));
    return startTime;
}

std::shared_ptr<ActivityRecord> ActivityTracker::makeRecord(const NewRecord& wanted, Date startTime) {
    const Date now = runLoop_.now();
    auto record =
        std::make_shared<ActivityRecord>(ActivityRecord::Values{.startTime = startTime,
                                                                .appBundleId = wanted.application.bundleIdentifier,
                                                                .appName = wanted.application.localizedName,
                                                                .windowTitle = wanted.window.title,
                                                                .documentPath = wanted.window.document,
                                                                .url = wanted.url,
                                                                .createdAt = now,
                                                                .updatedAt = now});
    if (applyPreference(*record))
        console_.line("ActivityTracker: 自动应用 {} 的分类偏好", wanted.application.localizedName);
    return record;
}

/// The record as its application's choice has it, before any rule; false without a choice.
bool ActivityTracker::applyPreference(ActivityRecord& record) {
    const auto preference =
        services_.categories ? services_.categories->preference(record.appName().value_or("")) : std::nullopt;
    // As a text: a category of the user's own is no case of the enumeration.
    record.category = preference ? preference->category : std::nullopt;
    record.tags = preference ? text::joined(preference->tags, ",") : std::string();
    record.source = "system";
    record.confidence = 1.0;
    record.project = nullptr;
    return preference.has_value();
}

void ActivityTracker::applyRules(ActivityRecord& record, ModelContext& context) {
    try {
        const auto rules = context.fetch<Rule>();
        if (!rules.empty()) RuleEngine::apply(record, rules, context.fetch<Project>());
    } catch (const StoreError& error) {
        console_.line("ActivityTracker: 规则归因失败: {}", error.what());
    }
}

ActivityTracker::Classification ActivityTracker::classification(const ActivityRecord& record) {
    return {.category = record.category(),
            .tags = record.tags(),
            .source = record.source(),
            .billingStatus = record.billingStatus(),
            .project = record.project()};
}

/// What became known late may be what a rule asks for: the record is classified as if it had been known from its start,
/// unless somebody else has classified it meanwhile.
void ActivityTracker::classifyAgain() {
    auto* context = modelContext_.get();
    if (context == nullptr || !currentRecord_ || classification(*currentRecord_) != classified_) return;
    applyPreference(*currentRecord_);
    applyRules(*currentRecord_, *context);
    classified_ = classification(*currentRecord_);
}

/// What is open in the store between two records of ours is left over from a crash.
void ActivityTracker::sweepActiveRecordsIfNeeded() {
    const Seconds uptime = runLoop_.uptime();
    if (lastActiveRecordsSweepAt_ && uptime - *lastActiveRecordsSweepAt_ < activeRecordsSweepInterval) return;
    lastActiveRecordsSweepAt_ = uptime;
    if (dataCleanupService_) dataCleanupService_->endAllActiveRecords();
}

void ActivityTracker::finalizeCurrentRecord(Date end) {
    finalizeCurrentRecord(end, runLoop_.now());
}

/// `latest` is the present, as the clock had it to which `end` belongs.
void ActivityTracker::finalizeCurrentRecord(Date end, Date latest) {
    auto* context = modelContext_.get();
    if (context == nullptr) {
        console_.line("ActivityTracker: No modelContext for finalizeCurrentRecord");
        return;
    }
    if (!currentRecord_) {
        console_.line("ActivityTracker: No currentRecord to finalize");
        return;
    }
    if (!currentRecord_->endTime()) closeRecord(*currentRecord_, end, latest);
    lastRecordEnd_ = currentRecord_->endTime();
    currentRecord_.reset();
    classified_.reset();
    lastCurrentRecordHeartbeatAt_.reset();
    // Later, so that the switch isn't held up; the save of the next record may well carry this one too.
    runLoop_.post([weak = context->weak(), &console = console_] {
        try {
            if (auto* store = weak.get()) store->save();
        } catch (const StoreError& error) {
            console.line("ActivityTracker: Failed to save finalized record: {}", error.what());
        }
    });
}

void ActivityTracker::closeRecord(ActivityRecord& record, Date wantedEnd, Date latest) {
    const Date earliest = record.startTime() + minimumDuration;
    Date end = std::max(wantedEnd, earliest);
    if (end > latest) {
        console_.line("ActivityTracker: ⚠️ 检测到 endTime 在未来 ({})，夹回当前时间", describe(end));
        end = std::max(latest, earliest);
    }
    record.endTime = end;
    record.updatedAt = end;
    const Seconds duration = end - record.startTime();
    const std::string name = record.appName().value_or("Unknown");
    console_.line("ActivityTracker: Finalized record for {} duration: {}s", name, durationText(duration));
    if (duration < shortRecordDuration)
        console_.line("ActivityTracker: 短记录 ({}s) for {}，等待智能合并处理", durationText(duration), name);
}

void ActivityTracker::updateCurrentRecordHeartbeat(const ClockLook& look) {
    auto* context = modelContext_.get();
    if (context == nullptr || !currentRecord_ || currentRecord_->endTime()) return;
    if (lastCurrentRecordHeartbeatAt_ && look.uptime - *lastCurrentRecordHeartbeatAt_ < currentRecordHeartbeatInterval)
        return;
    if (look.now <= currentRecord_->updatedAt()) return;
    currentRecord_->updatedAt = look.now;
    lastCurrentRecordHeartbeatAt_ = look.uptime;
    try {
        context->save();
    } catch (const StoreError& error) {
        console_.line("ActivityTracker: Failed to save current record heartbeat: {}", error.what());
    }
}

}  // namespace quorvane
