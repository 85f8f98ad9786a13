#include "cloud/RecordDownload.h"

#include "cloud/CloudKitDataStrategy.h"
#include "platform/InBackground.h"
#include "store/ActivityRecordCloudForm.h"

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
    unlessFailed([&] {
        const QueryPage page = answer.get();
        rows_ += page.rows.size();
        next_ = page.next;
        const bool goesOn = next_ && (takesAll_ || rows_ < CloudKitDataStrategy::defaultResultLimit);
        if (goesOn) ask(next_);  // the server works while this page is merged
        merge(page);
        parts_.context.save();
        if (goesOn) return;
        if (next_ && !takesAll_) return askHowManyThereAre();
        finish();
    });
}

void RecordDownload::merge(const QueryPage& page) {
    for (const auto& row : page.rows) {
        if (const auto* const unreadable = std::get_if<platform::UnreadableRow>(&row)) {
            parts_.console.line("下载CloudKit记录失败: {}: {}", unreadable->recordName, unreadable->reason);
            continue;
        }
        const auto& cloudRecord = std::get<CloudRecord>(row);
        ++parts_.progress.downloaded;
        if (const auto local = localRecord(cloudRecord, parts_.context))
            applyCloudRecord(*local, cloudRecord, &parts_.context, parts_.console);
        else
            parts_.context.insert(makeActivityRecord(cloudRecord, &parts_.context, parts_.console));
    }
    parts_.progressChanged();
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
        if (takesAll_) return ask(next_);
        finish();
    });
}

void RecordDownload::finish() {
    parts_.console.line("CloudKitSyncService: 下载了 {} 条云端记录", parts_.progress.downloaded);
    parts_.console.write("CloudKitSyncService: 数据合并完成");
    finished_(std::nullopt);
}

}  // namespace quorvane
