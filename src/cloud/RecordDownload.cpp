#include "cloud/RecordDownload.h"

#include "base/Json.h"
#include "cloud/CloudKitDataStrategy.h"
#include "platform/InBackground.h"
#include "store/ActivityRecordCloudForm.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>

namespace quorvane {
namespace {

using platform::CloudRecord;
using platform::QueryPage;
using platform::RecordCursor;

/// How far the store has seen the cloud: a date and a name where it broke off, or a word once it has seen the end.
constexpr const char* noteKey = "cloud-download";
constexpr const char* complete = "complete";

std::string noteOf(const RecordCursor& cursor) {
    return jsonText(Json::array({cursor.createdAt, cursor.recordName}));
}

std::optional<RecordCursor> cursorIn(const std::string& note) {
    const auto json = parseJson(note);
    if (!json || !json->is_array() || json->size() != 2 || !json->at(0).is_string() || !json->at(1).is_string())
        return std::nullopt;
    return RecordCursor{.createdAt = json->at(0).get<std::string>(), .recordName = json->at(1).get<std::string>()};
}

/// Pages go from the newest to the oldest.
bool isBehind(const RecordCursor& cursor, const RecordCursor& other) {
    return std::tie(cursor.createdAt, cursor.recordName) < std::tie(other.createdAt, other.recordName);
}

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

void RecordDownload::start() {
    unlessFailed([this] {
        const std::string note = parts_.context.note(noteKey).value_or("");
        hasSeenAll_ = note == complete;
        resume_ = cursorIn(note);
        ask({});
    });
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
        countRows(page_);
        if (const auto next = nextPage())
            ask(next);  // the server works while this page is merged
        else
            parts_.console.line("CloudKitSyncService: 下载了 {} 条云端记录", parts_.progress.downloaded);
        mergeSlice();
    });
}

void RecordDownload::countRows(const QueryPage& page) {
    rows_ += page.rows.size();
    for (const auto& row : page.rows) {
        const auto* const unreadable = std::get_if<platform::UnreadableRow>(&row);
        if (unreadable == nullptr) {
            ++parts_.progress.downloaded;
            continue;
        }
        ++parts_.progress.unreadable;
        parts_.console.line("下载CloudKit记录失败: {}: {}", unreadable->recordName, unreadable->reason);
    }
}

/// Where the page behind this one begins, if it is wanted.
std::optional<RecordCursor> RecordDownload::nextPage() const {
    if (!page_.next || rows_ < CloudKitDataStrategy::defaultResultLimit) return page_.next;
    if (hasSeenAll_) return std::nullopt;
    return resume_ && isBehind(*resume_, *page_.next) ? resume_ : page_.next;
}

void RecordDownload::mergeSlice() {
    const std::size_t end = std::min(merged_ + sliceSize, page_.rows.size());
    for (; merged_ < end; ++merged_)
        if (const auto* const cloudRecord = std::get_if<CloudRecord>(&page_.rows[merged_])) merge(*cloudRecord);
    parts_.context.save();
    parts_.progressChanged();
    if (merged_ == page_.rows.size()) return finishPage();
    parts_.runLoop.post([weak = weak_.handle()] {
        if (auto* const self = weak.get()) self->unlessFailed([self] { self->mergeSlice(); });
    });
}

void RecordDownload::merge(const CloudRecord& cloudRecord) {
    if (const auto local = localRecord(cloudRecord, parts_.context))
        applyCloudRecord(*local, cloudRecord, &parts_.context, parts_.console, parts_.localization);
    else
        parts_.context.insert(makeActivityRecord(cloudRecord, &parts_.context, parts_.console, parts_.localization));
}

void RecordDownload::finishPage() {
    const auto next = nextPage();
    if (!hasSeenAll_ && (!page_.next || !resume_ || isBehind(*page_.next, *resume_)))
        parts_.context.setNote(noteKey, page_.next ? noteOf(*page_.next) : complete);
    if (auto answer = std::exchange(waiting_, std::nullopt)) return notePage(std::move(*answer));
    if (next) return;  // it is on its way
    parts_.console.write("CloudKitSyncService: 数据合并完成");
    finished_(std::nullopt);
}

}  // namespace quorvane
