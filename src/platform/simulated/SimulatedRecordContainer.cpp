#include "platform/simulated/SimulatedRecordContainer.h"

#include "base/Iso8601.h"

#include <algorithm>
#include <functional>
#include <type_traits>
#include <utility>

namespace quorvane::platform {
namespace {

std::string createdAt(const CloudRecord& record) {
    const auto date = record.get<Date>("createdAt");
    return date ? iso8601Microseconds(*date) : std::string();
}

RecordCursor cursorOf(const CloudRecord& record) {
    return {.createdAt = createdAt(record), .recordName = record.recordName};
}

bool isBehind(const CloudRecord& record, const RecordCursor& cursor) {
    return std::pair(createdAt(record), record.recordName) < std::pair(cursor.createdAt, cursor.recordName);
}

bool matches(const CloudRecord& record, const RecordQuery& query) {
    return record.recordType == query.recordType && std::ranges::all_of(query.equals, [&](const auto& wanted) {
               const auto found = record.values.find(wanted.first);
               return found != record.values.end() && found->second == wanted.second;
           });
}

class SimulatedRecordSession final : public RecordSession {
public:
    explicit SimulatedRecordSession(SimulatedCloud& cloud) : cloud_(cloud) { ++cloud_.sessions; }

    AccountStatus accountStatus(std::string* reason) override {
        if (isCancelled_) return AccountStatus::couldNotDetermine;
        if (reason != nullptr) *reason = cloud_.statusReason;
        return cloud_.status;
    }

    std::vector<SaveResult> modify(DatabaseScope scope, const std::vector<CloudRecord>& records) override {
        return call([&] { return save(cloud_.records(scope), records); });
    }

    QueryPage query(DatabaseScope scope, const RecordQuery& query) override {
        return call([&] { return page(cloud_.records(scope), query); });
    }

    std::size_t count(DatabaseScope scope, const std::string& recordType) override {
        return call([&] {
            return static_cast<std::size_t>(std::ranges::count_if(
                cloud_.records(scope), [&](const auto& entry) { return entry.second.recordType == recordType; }));
        });
    }

    std::optional<CloudRecord> record(DatabaseScope scope, const std::string& recordName) override {
        return call([&]() -> std::optional<CloudRecord> {
            const auto found = cloud_.records(scope).find(recordName);
            return found == cloud_.records(scope).end() ? std::nullopt : std::optional(found->second);
        });
    }

    void deleteRecord(DatabaseScope scope, const std::string& recordName) override {
        call([&] {
            if (cloud_.records(scope).erase(recordName) == 0)
                throw CloudFailure(CloudFailure::Kind::recordNotFound, "there is no record " + recordName);
            return true;
        });
    }

    void cancel() override { isCancelled_ = true; }

private:
    /// Does the work unless a failure is due.
    template <class Work>
    std::invoke_result_t<Work> call(const Work& work) {
        if (isCancelled_) throw CloudFailure(CloudFailure::Kind::cancelled, "the session has ended");
        const bool isToFail = cloud_.failure && cloud_.callsBeforeFailure-- <= 0;
        if (isToFail && !cloud_.losesAnswer) throw CloudFailure(*cloud_.failure);
        auto result = work();
        if (isToFail) throw CloudFailure(*cloud_.failure);
        return result;
    }

    std::vector<SaveResult> save(SimulatedCloud::Records& stored, const std::vector<CloudRecord>& records) {
        std::vector<SaveResult> results;
        auto& batch = cloud_.batches.emplace_back();
        for (const CloudRecord& record : records) {
            batch.push_back(record.recordName);
            results.push_back({.recordName = record.recordName, .error = saveOne(stored, record)});
        }
        return results;
    }

    std::optional<std::string> saveOne(SimulatedCloud::Records& stored, const CloudRecord& record) {
        const auto refused = cloud_.refusedRecords.find(record.recordName);
        if (refused != cloud_.refusedRecords.end()) return refused->second;
        const auto [place, isNew] = stored.try_emplace(record.recordName, record);
        if (isNew) return std::nullopt;
        if (place->second.recordType != record.recordType) return "the name belongs to a record of another type";
        for (const auto& [key, value] : record.values)
            place->second.values.insert_or_assign(key, value);
        return std::nullopt;
    }

    QueryPage page(const SimulatedCloud::Records& stored, const RecordQuery& query) const {
        std::map<std::pair<std::string, std::string>, const CloudRecord*, std::greater<>> found;  // newest first
        for (const auto& [name, record] : stored)
            if (matches(record, query) && (!query.after || isBehind(record, *query.after)))
                found.emplace(std::pair(createdAt(record), name), &record);
        QueryPage page;
        if (!query.after) page.rows.insert(page.rows.end(), cloud_.unreadableRows.begin(), cloud_.unreadableRows.end());
        for (const auto& [key, record] : found) {
            if (page.rows.size() >= query.limit) {
                page.next = cursorOf(std::get<CloudRecord>(page.rows.back()));
                break;
            }
            page.rows.emplace_back(*record);
        }
        return page;
    }

    SimulatedCloud& cloud_;
    bool isCancelled_ = false;
};

}  // namespace

std::shared_ptr<RecordSession> SimulatedRecordContainer::newSession() {
    return std::make_shared<SimulatedRecordSession>(cloud_);
}

}  // namespace quorvane::platform
