#include "cloud/RecordDownload.h"

#include "cloud/CloudKitDataStrategy.h"
#include "platform/InBackground.h"
#include "store/ActivityRecordCloudForm.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

using platform::CloudRecord;
using platform::QueryPage;

std::string recordType() {
    return std::string(CloudKitDataStrategy::PrivateData::activityRecord);
}

std::shared_ptr<ActivityRecord> localRecord(const CloudRecord& cloudRecord, ModelContext& context) {
    const auto text = cloudRecord.get<std::string>("localId");
    const auto id = text ? Uuid::parse(*text) : std::nullopt;
    if (!id) return nullptr;
    const auto found = context.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::id) == *id, .limit = 1});
    return found.empty() ? nullptr : found.front();
}

}  // namespace

/// Runs a step on the main thread, and ends the download if it fails.
template <class Work>
void RecordDownload::unlessFailed(const Work& work) {
    std::optional<CloudKitSyncError> error;
    try {
        return work();
    } catch (const platform::CloudFailure& failure) {
        error = CloudKitSyncError::from(failure);
    } catch (const StoreError& failure) {
        error.emplace(CloudKitSyncError::Code::syncFailed, failure.what());
    }
    finished_(error);
}

void RecordDownload::ask(const std::optional<platform::RecordCursor>& after) {
    platform::RecordQuery query{.recordType = recordType(),
                                .equals = CloudKitDataStrategy::predicate(recordType()),
                                .limit = pageSize,
                                .after = after};
    platform::inBackground(
        parts_.runLoop,
        [session = parts_.session, query = std::move(query)] {
            return session->query(platform::DatabaseScope::privateData, query);
        },
        [weak = weak_.handle()](std::future<QueryPage> answer) {
            if (auto* const self = weak.get()) self->notePage(std::move(answer));
        });
}

void RecordDownload::notePage(std::future<QueryPage> answer) {
    if (merged_ < page_.rows.size()) {
        waiting_ = std::move(answer);
        return;
    }
    unlessFailed([&] {
        page_ = answer.get();
        merged_ = 0;
        rows_ += page_.rows.size();
        if (goesOn()) ask(page_.next);  // the server works while this page is merged
        mergeSlice();
    });
}

bool RecordDownload::goesOn() const {
    return page_.next && (takesAll_ || rows_ < CloudKitDataStrategy::defaultResultLimit);
}

void RecordDownload::mergeSlice() {
    const std::size_t end = std::min(merged_ + sliceSize, page_.rows.size());
    for (; merged_ < end; ++merged_) {
        const auto& row = page_.rows[merged_];
        if (const auto* const unreadable = std::get_if<platform::UnreadableRow>(&row))
            parts_.console.line("下载CloudKit记录失败: {}: {}", unreadable->recordName, unreadable->reason);
        else
            merge(std::get<CloudRecord>(row));
    }
    parts_.context.save();
    parts_.progressChanged();
    if (merged_ == page_.rows.size()) return finishPage();
    parts_.runLoop.post([weak = weak_.handle()] {
        if (auto* const self = weak.get()) self->unlessFailed([self] { self->mergeSlice(); });
    });
}

void RecordDownload::merge(const CloudRecord& cloudRecord) {
    ++parts_.progress.downloaded;
    if (const auto local = localRecord(cloudRecord, parts_.context))
        applyCloudRecord(*local, cloudRecord, &parts_.context, parts_.console);
    else
        parts_.context.insert(makeActivityRecord(cloudRecord, &parts_.context, parts_.console));
}

void RecordDownload::finishPage() {
    if (auto next = std::exchange(waiting_, std::nullopt)) return notePage(std::move(*next));
    if (goesOn()) return;  // it is on its way
    if (page_.next && !takesAll_) return askHowManyThereAre();
    finish();
}

void RecordDownload::askHowManyThereAre() {
    platform::inBackground(
        parts_.runLoop,
        [session = parts_.session] { return session->count(platform::DatabaseScope::privateData, recordType()); },
        [weak = weak_.handle()](std::future<std::size_t> answer) {
            if (auto* const self = weak.get()) self->noteCount(std::move(answer));
        });
}

void RecordDownload::noteCount(std::future<std::size_t> answer) {
    unlessFailed([&] {
        const std::size_t there = answer.get();
        takesAll_ = there > parts_.context.count(field(&ActivityRecord::cloudKitRecordID).isPresent());
        if (takesAll_) return ask(page_.next);
        finish();
    });
}

void RecordDownload::finish() {
    parts_.console.line("CloudKitSyncService: 下载了 {} 条云端记录", parts_.progress.downloaded);
    parts_.console.write("CloudKitSyncService: 数据合并完成");
    finished_(std::nullopt);
}

}  // namespace quorvane
