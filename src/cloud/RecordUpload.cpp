#include "cloud/RecordUpload.h"

#include "platform/InBackground.h"
#include "store/ActivityRecordCloudForm.h"

#include <algorithm>

namespace quorvane {
namespace {

using Results = std::vector<platform::SaveResult>;

std::vector<platform::CloudRecord> cloudForm(const std::vector<std::shared_ptr<ActivityRecord>>& records) {
    std::vector<platform::CloudRecord> out;
    out.reserve(records.size());
    for (const auto& record : records)
        out.push_back(makeCloudRecord(*record));
    return out;
}

}  // namespace

void RecordUpload::start() {
    try {
        findCandidates();
        ready_ = nextBatch();
        if (!ready_.empty()) return sendReady();
    } catch (const StoreError& error) {
        return finished_(CloudKitSyncError(CloudKitSyncError::Code::syncFailed, error.what()));
    }
    finished_(std::nullopt);
}

/// Rows and not objects: a first sync may have the records of years.
void RecordUpload::findCandidates() {
    parts_.context.save();  // a scan sees what is saved
    parts_.context.scan<ActivityRecord>({.predicate = field(&ActivityRecord::cloudKitRecordID).isNone(),
                                         .sort = {descending(&ActivityRecord::startTime)}},
                                        {"pk"}, [this](const Row& row) {
                                            candidates_.push_back(row.integer(0));
                                            return true;
                                        });
    parts_.console.line("CloudKitSyncService: 找到 {} 条本地记录需要同步", candidates_.size());
    parts_.progress.toUpload = candidates_.size();
    parts_.progressChanged();
}

RecordUpload::Batch RecordUpload::nextBatch() {
    Batch batch;
    while (batch.size() < batchSize && !candidates_.empty()) {
        const auto entity = parts_.context.object(ActivityRecord::description(), candidates_.front());
        candidates_.pop_front();
        if (entity) batch.push_back(std::static_pointer_cast<ActivityRecord>(entity));
    }
    return batch;
}

/// The server works on it while the next batch is made ready. Should that fail, what it saved is sent again next time.
void RecordUpload::sendReady() {
    Batch batch = std::exchange(ready_, {});
    auto records = cloudForm(batch);
    platform::inBackground(
        parts_.runLoop,
        [session = parts_.session, records = std::move(records)] {
            return session->modify(platform::DatabaseScope::privateData, records);
        },
        [weak = weak_.handle(), batch = std::move(batch)](std::future<Results> answer) {
            if (auto* const self = weak.get()) self->noteAnswer(batch, std::move(answer));
        });
    ready_ = nextBatch();
}

void RecordUpload::noteAnswer(const Batch& batch, std::future<Results> answer) {
    try {
        const Results results = answer.get();
        const bool isLast = ready_.empty();
        if (!isLast) sendReady();
        noteResults(batch, results);
        parts_.context.save();
        if (!isLast) return;
        parts_.console.write("CloudKitSyncService: 上传完成");
    } catch (const platform::CloudFailure& failure) {
        return finished_(CloudKitSyncError::from(failure));
    } catch (const StoreError& error) {
        return finished_(CloudKitSyncError(CloudKitSyncError::Code::syncFailed, error.what()));
    }
    finished_(std::nullopt);
}

void RecordUpload::noteResults(const Batch& batch, const Results& results) {
    for (std::size_t i = 0; i < std::min(batch.size(), results.size()); ++i) {
        const platform::SaveResult& result = results[i];
        if (result.error) {
            ++parts_.progress.refused;
            parts_.console.line("保存记录失败: {}: {}", result.recordName, *result.error);
        } else {
            batch[i]->cloudKitRecordID = result.recordName;
        }
    }
    parts_.progress.uploaded += batch.size();
    parts_.progressChanged();
}

}  // namespace quorvane
